// Pictures made for drawing: from bitmaps, icons and files.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/form_cache.h"
#include "ambrel/render/implementation_of.h"
#include "frame/com/dispatch.h"
#include "frame/com/result.h"
#include "host/host.h"

namespace ambrel {

/// IVexRenderImage: pixels that do not change, and the forms in which they were drawn lately.
class RenderImage : public morvane::Dispatch<IVexRenderImage> {
public:
    static constexpr IID kImplementationIid = {
        0x9C2D7A10, 0x4F6E, 0x4B53, {0x86, 0x0B, 0xE2, 0x91, 0x7C, 0x3A, 0xD5, 0x48}};
    using ImplementedInterface = IVexRenderImage;

    /// Never null. Throws std::bad_alloc.
    static morvane::ComPtr<RenderImage> make(Surface pixels, VEX_PICTURE_TYPE type);

    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept;

    Size size() const noexcept { return m_pixels.size(); }
    ConstPixelView pixels() const noexcept { return m_pixels.view(); }

    /// Draws a part of the image into the target: scaled to fill it, or in its own size from the left top corner, cut
    /// to the target; where the part reaches beyond the image, nothing is drawn at its place. A transparent colour of 0
    /// means none. False when there is nothing to draw.
    bool draw(const Canvas& canvas, const Rect& target, const Rect& source, bool stretch, OLE_COLOR transparent);

    STDMETHODIMP GetWidth(long* result) noexcept override;
    STDMETHODIMP GetHeight(long* result) noexcept override;
    STDMETHODIMP GetFormatType(VEX_PICTURE_TYPE* result) noexcept override;
    STDMETHODIMP GetBits(hyper* result) noexcept override;
    STDMETHODIMP GetColorDepth(short* result) noexcept override;
    STDMETHODIMP HasAlphaChannel(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetHandle(hyper* result) noexcept override;
    STDMETHODIMP GetRenderType(VEX_RENDERENGINE_TYPE* result) noexcept override;
    STDMETHODIMP Draw(IVexRenderDC* dc, SkinRect target, SkinRect source, VARIANT_BOOL stretch, OLE_COLOR transparent,
                      VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetRenderImagePtr(hyper pointer) noexcept override;
    STDMETHODIMP GetRenderImagePtr(hyper* result) noexcept override;
    STDMETHODIMP DrawAll(IVexRenderDC* dc, SkinRect target, VARIANT_BOOL stretch, OLE_COLOR transparent,
                         VARIANT_BOOL* result) noexcept override;

private:
    HRESULT drawOn(IVexRenderDC* dc, const Rect& target, const Rect& source, VARIANT_BOOL stretch,
                   OLE_COLOR transparent, VARIANT_BOOL* result) noexcept;

    Surface m_pixels;
    Coverage m_coverage = Coverage::Blank;
    VEX_PICTURE_TYPE m_type = VEX_PT_UNKNOWN;
    FormCache m_forms;
};

} // namespace ambrel
