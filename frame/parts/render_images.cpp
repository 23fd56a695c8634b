#include "frame/parts/render_images.h"

#include "frame/com/bstr.h"

#include <cwchar>

namespace morvane {

namespace {

/// The name under which the render device knows an image made from a handle.
Bstr nameOfHandle(std::int64_t handle)
{
    wchar_t name[16];
    std::swprintf(name, std::size(name), L"0x%08X", static_cast<unsigned>(handle));
    return Bstr(name);
}

std::int64_t currentDevice(IAmbrel& root)
{
    std::int64_t device = 0;
    root.GetRenderDevice(&device);
    return device;
}

} // namespace

void RenderImageSlot::makeFromHandle(const HostCache& host, std::int64_t handle, VEX_PICTURE_TYPE type)
{
    destroy(host);
    if (!host.res || !host.root || handle == 0)
        return;
    const Bstr name = nameOfHandle(handle);
    host.res->CreateImageByHandle(currentDevice(*host.root), name.get(), handle, type, m_image.put());
}

void RenderImageSlot::makeFromFile(const HostCache& host, BSTR path)
{
    m_image.reset();
    if (host.res && host.root)
        host.res->CreateImageByPath(currentDevice(*host.root), path, m_image.put());
}

void RenderImageSlot::destroy(const HostCache& host)
{
    const ComPtr<IVexRenderImage> old = std::move(m_image);
    VARIANT_BOOL done = VARIANT_FALSE;
    if (old && host.res)
        host.res->DestroyImage(old.get(), &done);
}

Size RenderImageSlot::size() const
{
    long width = 0;
    long height = 0;
    if (m_image) {
        m_image->GetWidth(&width);
        m_image->GetHeight(&height);
    }
    return {static_cast<int>(width), static_cast<int>(height)};
}

void RenderImageSlot::draw(IVexRenderDC& dc, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (m_image)
        m_image->Draw(&dc, toSkinRect(rect), toSkinRect(Rect::at({}, size())), VARIANT_TRUE, 0, &drawn);
}

void RenderImageSlot::drawAll(IVexRenderDC& dc, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (m_image)
        m_image->DrawAll(&dc, toSkinRect(rect), VARIANT_TRUE, 0, &drawn);
}

} // namespace morvane
