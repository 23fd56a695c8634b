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
    const ComPtr<IVexRes> res = host.res;
    const ComPtr<IAmbrel> root = host.root;
    if (!res || !root || handle == 0)
        return;
    const Bstr name = nameOfHandle(handle);
    ComPtr<IVexRenderImage> made;
    res->CreateImageByHandle(currentDevice(*root), name.get(), handle, type, made.put());
    destroy(host); // one that was made in the meantime
    m_image = std::move(made);
}

void RenderImageSlot::makeFromFile(const HostCache& host, BSTR path)
{
    const ComPtr<IVexRes> res = host.res;
    const ComPtr<IAmbrel> root = host.root;
    ComPtr<IVexRenderImage> made;
    if (res && root)
        res->CreateImageByPath(currentDevice(*root), path, made.put());
    m_image = std::move(made);
}

void RenderImageSlot::destroy(const HostCache& host)
{
    const ComPtr<IVexRenderImage> old = std::move(m_image);
    const ComPtr<IVexRes> res = host.res;
    VARIANT_BOOL done = VARIANT_FALSE;
    if (old && res)
        res->DestroyImage(old.get(), &done);
}

Size RenderImageSlot::size() const
{
    long width = 0;
    long height = 0;
    if (const ComPtr<IVexRenderImage> image = m_image) { // a call out may replace it
        image->GetWidth(&width);
        image->GetHeight(&height);
    }
    return {static_cast<int>(width), static_cast<int>(height)};
}

void RenderImageSlot::draw(IVexRenderDC& dc, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (const ComPtr<IVexRenderImage> image = m_image)
        image->Draw(&dc, toSkinRect(rect), toSkinRect(Rect::at({}, size())), VARIANT_TRUE, 0, &drawn);
}

void RenderImageSlot::drawAll(IVexRenderDC& dc, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    if (const ComPtr<IVexRenderImage> image = m_image)
        image->DrawAll(&dc, toSkinRect(rect), VARIANT_TRUE, 0, &drawn);
}

} // namespace morvane
