// The helper with which objects draw on a plain device context.
#pragma once

#include "ambrel/render/dib_surface.h"
#include "frame/com/dispatch.h"
#include "frame/com/result.h"
#include "host/host.h"

#include <memory>

namespace ambrel {

/// IVexObjectDraw. Between BeginDraw and EndDraw it draws on the given device context, inside the object's rectangle;
/// outside of a drawing it hands out the device context of the render context it was given, if any.
class ObjectDraw : public morvane::Dispatch<IVexObjectDraw> {
public:
    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept;

    /// A memory context is the object's own and begins at its left top corner; any other has window coordinates.
    STDMETHODIMP BeginDraw(hyper dc, ISkinObjResBase* object, VARIANT_BOOL drawCurrent,
                           VARIANT_BOOL memoryDc) noexcept override;
    STDMETHODIMP EndDraw() noexcept override;
    STDMETHODIMP GetDC(VARIANT_BOOL blend, hyper* result) noexcept override;
    STDMETHODIMP GetDrawRect(SkinRect* result) noexcept override;
    STDMETHODIMP PaintIcon(SkinRect target, hyper icon, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP PaintImageAll(hyper bitmap, VARIANT_BOOL nullCopy, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP PaintImagePart(SkinRect target, hyper bitmap, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP PaintPartImagePart(SkinRect target, SkinRect source, hyper bitmap,
                                    VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawText(IVexTextStyle* style, BSTR text, VARIANT_BOOL* result) noexcept override;
    /// Puts what was drawn on GetDC(true) over the target, weakened by the object's opacity. What GDI drew there
    /// covers.
    STDMETHODIMP Blend(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetBmpBits(hyper* result) noexcept override;
    STDMETHODIMP SaveBitmap(BSTR path, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetRenderDC(IVexRenderDC** result) noexcept override;
    STDMETHODIMP SetRenderDC(IVexRenderDC* dc) noexcept override;

private:
    HDC targetDc() noexcept;
    bool paint(const Rect& target, ConstPixelView pixels);

    HDC m_dc = nullptr;                  // the caller's, between BeginDraw and EndDraw
    Rect m_rect;                         // the object's, in the device context's coordinates
    int m_opacity = 255;                 // the object's
    std::unique_ptr<DibSurface> m_layer; // what is drawn aside and put down by Blend
    morvane::ComPtr<IVexRenderDC> m_renderDC;
};

} // namespace ambrel
