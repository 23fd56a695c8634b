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

    /// The number that the platform's image lists have for it.
    static constexpr OLE_COLOR kKeyOfFirstPixel = 0xFF000000;

    /// Cuts a strip into images of the given width, what is left over at the end is left out; zero or less makes one
    /// image of all. The key colour becomes transparent: 0xFFFFFFFF keys nothing, kKeyOfFirstPixel the colour of
    /// the first pixel. False, and nothing changes, when not even one image fits. Throws std::bad_alloc.
    bool setStrip(Surface strip, int imageWidth, OLE_COLOR key);

    int count() const noexcept;
    Size imageSize() const noexcept { return {m_imageWidth, m_strip.size().height}; }
    ConstPixelView image(int index) const noexcept; // empty beyond the last

protected:
    /// The images side by side, as many rows as the rectangle has room for.
    bool preview(HDC dc, const Rect& rect) override;
    bool isComplete() const override { return count() > 0; }

private:
    Surface m_strip;
    int m_imageWidth = 0;
};

} // namespace ambrel
