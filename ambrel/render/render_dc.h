// The drawing context that controls are handed.
#pragma once

#include "ambrel/render/dib_surface.h"
#include "ambrel/render/implementation_of.h"
#include "ambrel/render/scale.h"
#include "frame/com/dispatch.h"
#include "frame/com/result.h"
#include "host/host.h"

#include <memory>
#include <vector>

namespace ambrel {

class RenderDevice;

/// IVexRenderDC over a surface. Coordinates are the window's; drawing is cut to the update rectangle and the viewport.
/// Inside the runtime it is used through the camel-case methods.
class RenderDC : public morvane::Dispatch<IVexRenderDC> {
public:
    static constexpr IID kImplementationIid = {
        0x3B1F9E52, 0x6C0D, 0x4E8A, {0x9A, 0x41, 0x5D, 0x27, 0xE0, 0xB3, 0x18, 0xC6}};
    using ImplementedInterface = IVexRenderDC;

    RenderDC();
    ~RenderDC();
    HRESULT finalConstruct() noexcept { return S_OK; }
    void finalRelease() noexcept {}
    void* findInterface(REFIID iid) noexcept;

    /// The device this context draws for; null for a context of its own and after the device is gone.
    RenderDevice* device() const noexcept { return m_device; }
    /// Throws std::bad_alloc for a device; not for null.
    void setDevice(RenderDevice* device);
    void deviceGone() noexcept;

    /// Draws on this surface from now on (borrowed; null for nothing), its first pixel at `origin`. Layers, update
    /// rectangle and viewport start anew.
    void setTarget(const DibSurface* surface, Point origin = {}) noexcept;
    bool hasTarget() const noexcept { return m_target != nullptr; }

    /// Whether the control being drawn is laid out from right to left: its texts are aligned the other way round.
    bool isMirrored() const noexcept { return m_isMirrored; }
    Scale scale() const noexcept;
    void setScale(Scale scale) noexcept { m_ownScale = scale; } // for a context without a device

    /// Where to draw now: the target or the innermost layer, and the clip. Valid until the next call of this object.
    Canvas canvas() noexcept;
    Rect clip() const noexcept;
    void setUpdateRect(const Rect& rect) noexcept { m_updateRect = rect; }

    /// What is drawn until popLayer is drawn aside and then put over what was there, weakened by the opacity (0..255).
    /// `rect` bounds what can be drawn. Opacity 255 costs nothing. Throws std::bad_alloc. Pops pair with pushes.
    void pushLayer(const Rect& rect, int opacity);
    void popLayer() noexcept;

    /// The device context of what canvas() draws on, with the clip and window coordinates set; whatever GDI draws there
    /// is made visible by the next call of this object. Null without a target.
    HDC beginGdi() noexcept;
    /// Gives pixels that GDI drew their alpha.
    void finishDrawing() noexcept;

    STDMETHODIMP SetRenderDCPtr(hyper pointer) noexcept override;
    STDMETHODIMP GetRenderDCPtr(hyper* result) noexcept override;
    STDMETHODIMP FillColor(SkinRect* rect, OLE_COLOR start, OLE_COLOR end, short angle,
                           VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP FillSolidColor(SkinRect* rect, OLE_COLOR colour, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawImage(IVexRenderImage* image, SkinRect* target, SkinRect* source, VARIANT_BOOL stretch,
                           OLE_COLOR transparent, VARIANT_BOOL client, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawImageSection(SkinImageSection* section, SkinRect* target, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawText(BSTR text, SkinRect* rect, hyper font, OLE_COLOR colour, long type,
                          VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawFrameControl(SkinRect* rect, long type, long state, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawLine(short x1, short y1, short x2, short y2, short penSize, short alpha, OLE_COLOR colour,
                          VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP IsValidateRect(SkinRect* rect, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP RenderPartImagePart(SkinRect* target, SkinRect* source, hyper bitmap, VARIANT_BOOL stretch,
                                     VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetHDC(long width, long height, hyper* result) noexcept override;
    STDMETHODIMP FlushHDC(hyper dc, long x, long y, SkinRect* source, VARIANT_BOOL autoDelete) noexcept override;
    STDMETHODIMP SetUpdateRect(SkinRect rect) noexcept override;
    STDMETHODIMP GetUpdateRect(SkinRect* result) noexcept override;
    STDMETHODIMP DrawHDC(hyper dc, long x, long y, SkinRect* source) noexcept override;
    STDMETHODIMP SetViewport(SkinRect rect) noexcept override;
    STDMETHODIMP GetViewport(SkinRect* result) noexcept override;
    STDMETHODIMP GetRenderDevice(hyper* result) noexcept override;
    STDMETHODIMP GetDC(hyper* result) noexcept override;
    STDMETHODIMP GetType(long* result) noexcept override;
    STDMETHODIMP SetCurrentControl(IVexControlBase* control) noexcept override;
    STDMETHODIMP GetCurrentControl(IVexControlBase** result) noexcept override;
    STDMETHODIMP GetHDCNoAlpha(long width, long height, hyper* result) noexcept override;

private:
    struct Layer {
        std::unique_ptr<DibSurface> surface; // null where the opacity needs none
        Point origin;
        int opacity;
    };

    /// A device context handed out by GetHDC.
    struct Scratch {
        std::unique_ptr<DibSurface> surface;
        bool hasAlpha;
    };

    template <class Drawing>
    HRESULT draw(const SkinRect* rect, VARIANT_BOOL* result, Drawing&& drawing) noexcept;
    const Layer* currentLayer() const noexcept;
    HRESULT makeScratch(long width, long height, bool hasAlpha, hyper* result) noexcept;
    void drawScratch(const Scratch& scratch, Point at, const Rect& source);
    void drawForeignDc(HDC dc, Point at, const Rect& source) noexcept;

    RenderDevice* m_device = nullptr;
    Scale m_ownScale;
    const DibSurface* m_target = nullptr;
    Point m_targetOrigin;
    std::vector<Layer> m_layers;
    std::vector<Scratch> m_scratch;
    Rect m_updateRect;
    Rect m_viewport; // all zero: everything; empty in any other way: nothing
    bool m_hasGdiDrawing = false;
    morvane::ComPtr<IVexControlBase> m_currentControl; // whose drawing this is; null between drawings
    bool m_isMirrored = false;                         // whether that control is laid out from right to left
};

/// The object behind a context handed out by us; null for any other.
inline morvane::ComPtr<RenderDC> fromInterface(IVexRenderDC* dc) noexcept
{
    return implementationOf<RenderDC>(dc);
}

} // namespace ambrel
