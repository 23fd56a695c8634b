#include "ambrel/window/window_surface.h"

#include "ambrel/objects/drawing.h"
#include "ambrel/window/alpha_region.h"

#include <algorithm>
#include <utility>

namespace ambrel {

namespace {

constexpr std::uint32_t kGround = 0xFFF3F4F7; // where no object draws

/// Puts a value back at the end of a scope, also when drawing fails.
class Drawing {
public:
    explicit Drawing(bool& flag) noexcept : m_flag(flag), m_former(std::exchange(flag, true)) {}
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() { m_flag = m_former; }

private:
    bool& m_flag;
    bool m_former;
};

} // namespace

bool WindowSurface::resize(Size size)
{
    const bool fresh = !pixels() || m_device.size() != size;
    return fresh && m_device.resize(size);
}

void WindowSurface::clear(const Rect& part)
{
    const PixelView view = pixels()->pixels();
    const Rect area = part.intersection({0, 0, view.width, view.height});
    const std::uint32_t ground = m_device.isOpaque() ? kGround : 0;
    for (int y = area.top; y < area.bottom; ++y)
        std::fill_n(view.row(y) + area.left, area.width(), ground);
}

void WindowSurface::draw(ObjectNode& root, const Rect& part)
{
    if (!pixels() || part.isEmpty())
        return;
    const Drawing drawing(m_drawing);
    const morvane::ComPtr<RenderDC> dc(&m_device.renderDC());
    clear(part);
    dc->setUpdateRect(part);
    drawChildren(root, *dc.get(), part);
    dc->finishDrawing();
}

HRGN WindowSurface::opaqueRegion() const
{
    return pixels() ? alphaRegion(pixels()->pixels()).detach() : nullptr;
}

} // namespace ambrel
