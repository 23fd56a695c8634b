// Layers that callers draw on by themselves.
#pragma once

#include "ambrel/render/dib_surface.h"
#include "frame/com/dispatch.h"
#include "frame/com/result.h"
#include "host/host.h"

#include <memory>

namespace ambrel {

/// ILayerGraphics: a bitmap with a device context, placed in window coordinates.
class LayerGraphics : public morvane::Dispatch<ILayerGraphics> {
public:
    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept;

    /// Starts anew, transparent, over a rectangle in window coordinates. False, and nothing changes, for an empty one
    /// or one beyond what bitmaps may have. Throws std::bad_alloc.
    bool cover(const Rect& rect);
    const DibSurface* surface() const noexcept { return m_surface.get(); } // null before cover

    STDMETHODIMP Create(SkinRect rect, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetDC(hyper* result) noexcept override;
    STDMETHODIMP Destroy() noexcept override;
    STDMETHODIMP Clear(SkinRect rect) noexcept override;
    STDMETHODIMP GetRect(SkinRect* result) noexcept override;
    STDMETHODIMP GetBits(hyper* result) noexcept override;
    STDMETHODIMP GetBitmap(hyper* result) noexcept override;
    STDMETHODIMP GetOldBitmap(hyper* result) noexcept override;
    STDMETHODIMP GetBmpInfo(hyper* result) noexcept override;
    STDMETHODIMP SetLayerBmp(hyper pointer) noexcept override;
    STDMETHODIMP GetLayerBmp(hyper* result) noexcept override;

private:
    std::unique_ptr<DibSurface> m_surface; // null before Create
    Rect m_rect;
    BITMAPINFO m_info{};
    hyper m_layerPointer = 0; // the caller's
};

} // namespace ambrel
