#include "ambrel/window/window_surface.h"

#include "ambrel/objects/drawing.h"
#include "ambrel/window/alpha_region.h"

#include <algorithm>
#include <utility>

namespace ambrel {

namespace {

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
    for (int y = area.top; y < area.bottom; ++y)
        std::fill_n(view.row(y) + area.left, area.width(), m_device.ground());
}

void WindowSurface::drawParent(HWND child, const Rect& part)
{
    const HWND parent = GetAncestor(child, GA_PARENT);
    if (!parent || parent == GetDesktopWindow())
        return;
    POINT origin{};
    MapWindowPoints(child, parent, &origin, 1);
    const HDC dc = pixels()->dc();
    const int state = SaveDC(dc);
    IntersectClipRect(dc, part.left, part.top, part.right, part.bottom);
    OffsetViewportOrgEx(dc, -origin.x, -origin.y, nullptr);
    SendMessageW(parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    SendMessageW(parent, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
    RestoreDC(dc, state);
    const PixelView view = pixels()->pixels();
    const Rect area = part.intersection({0, 0, view.width, view.height});
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x)
            view.row(y)[x] |= 0xFF000000; // the platform's drawing knows no alpha
    }
}

void WindowSurface::draw(ObjectNode& root, const Rect& part, HWND childWindow)
{
    if (!pixels() || part.isEmpty())
        return;
    const Drawing drawing(m_drawing);
    const morvane::ComPtr<RenderDC> dc(&m_device.renderDC());
    clear(part);
    if (childWindow)
        drawParent(childWindow, part);
    dc->setUpdateRect(part);
    drawChildren(root, *dc.get(), part);
    dc->finishDrawing();
}

HRGN WindowSurface::opaqueRegion() const
{
    return pixels() ? alphaRegion(pixels()->pixels()).detach() : nullptr;
}

} // namespace ambrel
