// Render images that a control makes from handles and files.
#pragma once

#include "frame/host_cache.h"
#include "host/geometry.h"

namespace morvane {

/// One render image of a control, made through the resource object and given back to it when it is replaced.
class RenderImageSlot {
public:
    explicit operator bool() const noexcept { return static_cast<bool>(m_image); }
    IVexRenderImage* get() const noexcept { return m_image.get(); }

    /// Replaces the image by one made from an icon or a bitmap; nothing is made while resource object or root are
    /// unknown or the handle is 0. The handle stays the caller's.
    void makeFromHandle(const HostCache& host, std::int64_t handle, VEX_PICTURE_TYPE type);

    /// Makes an image from a file without giving the present one back first: others may still draw it.
    void makeFromFile(const HostCache& host, BSTR path);

    void destroy(const HostCache& host);

    /// In pixels; empty without an image.
    Size size() const;

    /// Draws the whole image, stretched into the rectangle.
    void draw(IVexRenderDC& dc, const Rect& rect) const;

    /// The same through the image's own operation for it.
    void drawAll(IVexRenderDC& dc, const Rect& rect) const;

private:
    ComPtr<IVexRenderImage> m_image;
};

} // namespace morvane
