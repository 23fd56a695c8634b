// Image lists as shared resources: pictures of one size, side by side.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/shared_resource.h"

namespace ambrel {

/// IVexImageList; the contract gives it no operations of its own, so what it holds is used inside the runtime.
class ImageList : public SharedResource<IVexImageList> {
public:
    static constexpr IID kImplementationIid = {
        0xD52A7E09, 0x3C94, 0x41F6, {0xB8, 0x02, 0x6D, 0x1E, 0x95, 0xA7, 0x48, 0x33}};

    ImageList() : SharedResource(VEXOBJTYPE_IMAGELIST, L"ImageList") {}
    void* findInterface(REFIID iid) noexcept { return findResourceInterface(iid, kImplementationIid); }

    /// Cuts a strip into images of the given width; zero or less makes one image of all. The key colour (0x00BBGGRR)
    /// becomes transparent; 0xFFFFFFFF keys nothing. Throws std::bad_alloc.
    void setStrip(Surface strip, int imageWidth, OLE_COLOR key);

    int count() const noexcept;
    Size imageSize() const noexcept { return {m_imageWidth, m_strip.size().height}; }
    ConstPixelView image(int index) const noexcept; // empty beyond the last

private:
    Surface m_strip;
    int m_imageWidth = 0;
};

} // namespace ambrel
