#include "ambrel/render/render_device.h"

#include "ambrel/render/render_dc.h"
#include "frame/com/instance.h"

#include <algorithm>
#include <set>

namespace ambrel {

namespace {

/// Every living device of the process; handles from outside are looked up here before anything is touched.
std::set<const RenderDevice*>& livingDevices()
{
    static std::set<const RenderDevice*> devices;
    return devices;
}

Scale& lastScale() noexcept
{
    static Scale scale;
    return scale;
}

} // namespace

Scale currentScale() noexcept
{
    return lastScale();
}
void setCurrentScale(Scale scale) noexcept
{
    lastScale() = scale;
}

RenderDevice::RenderDevice(Scale scale) : m_scale(scale)
{
    static unsigned last = 0;
    m_serial = ++last;
    livingDevices().insert(this);
    setCurrentScale(scale);
}

RenderDevice::~RenderDevice()
{
    livingDevices().erase(this);
    for (RenderDC* each : m_contexts)
        each->deviceGone();
}

void RenderDevice::removeContext(RenderDC& dc) noexcept
{
    // Once only: a context that is given the same device again was added before it is removed.
    const auto found = std::find(m_contexts.begin(), m_contexts.end(), &dc);
    if (found != m_contexts.end())
        m_contexts.erase(found);
}

RenderDevice* RenderDevice::fromHandle(std::int64_t handle) noexcept
{
    auto* device = reinterpret_cast<RenderDevice*>(handle);
    return livingDevices().contains(device) ? device : nullptr;
}

void RenderDevice::setScale(Scale scale) noexcept
{
    m_scale = scale;
    setCurrentScale(scale);
}

bool RenderDevice::resize(Size size)
{
    if (m_surface && m_surface->size() == size)
        return true;
    auto surface = std::make_unique<DibSurface>(size);
    if (surface->isEmpty() && !size.isEmpty())
        return false;
    m_surface = std::move(surface);
    renderDC().setTarget(m_surface->isEmpty() ? nullptr : m_surface.get());
    return true;
}

Size RenderDevice::size() const noexcept
{
    return m_surface ? m_surface->size() : Size{};
}

RenderDC& RenderDevice::renderDC()
{
    if (!m_renderDC) {
        m_renderDC = morvane::Instance<RenderDC>::make();
        m_renderDC->setDevice(this);
    }
    return *m_renderDC.get();
}

void RenderDevice::present(HDC target, std::span<const Rect> parts)
{
    if (!m_surface || m_surface->isEmpty())
        return;
    renderDC().finishDrawing();
    for (const Rect& part : parts) {
        const Rect r = part.intersection(Rect::at({}, m_surface->size()));
        if (!r.isEmpty())
            BitBlt(target, r.left, r.top, r.width(), r.height(), m_surface->dc(), r.left, r.top, SRCCOPY);
    }
}

void RenderDevice::present(HWND window, std::span<const Rect> parts)
{
    const morvane::WindowDc dc(window);
    if (dc.get())
        present(dc.get(), parts);
}

bool RenderDevice::presentLayered(HWND window, Point screenPosition, int opacity)
{
    if (!m_surface || m_surface->isEmpty())
        return false;
    renderDC().finishDrawing();
    POINT position{screenPosition.x, screenPosition.y};
    POINT origin{};
    SIZE extent{m_surface->size().width, m_surface->size().height};
    BLENDFUNCTION blend{AC_SRC_OVER, 0, static_cast<BYTE>(std::clamp(opacity, 0, 255)), AC_SRC_ALPHA};
    return UpdateLayeredWindow(window, nullptr, &position, &extent, m_surface->dc(), &origin, 0, &blend, ULW_ALPHA) !=
           0;
}

void RenderDevice::keepImage(std::wstring_view name, IVexRenderImage* image)
{
    NamedImage& place = m_images[std::wstring(name)];
    place.image = morvane::ComPtr(image);
    ++place.uses;
}

morvane::ComPtr<IVexRenderImage> RenderDevice::findImage(std::wstring_view name) const
{
    const auto found = m_images.find(name);
    return found != m_images.end() ? found->second.image : nullptr;
}

morvane::ComPtr<IVexRenderImage> RenderDevice::fetchImage(std::wstring_view name)
{
    const auto found = m_images.find(name);
    if (found == m_images.end())
        return nullptr;
    ++found->second.uses;
    return found->second.image;
}

bool RenderDevice::releaseImage(std::wstring_view name)
{
    const auto found = m_images.find(name);
    if (found == m_images.end())
        return false;
    if (--found->second.uses == 0)
        m_images.erase(found);
    return true;
}

bool RenderDevice::dropImage(IVexRenderImage* image)
{
    return std::erase_if(m_images, [&](const auto& entry) { return entry.second.image.get() == image; }) != 0;
}

} // namespace ambrel
