// A surface with a background that holds other controls.
#pragma once

#include "controls/control_interfaces.h"
#include "frame/control.h"
#include "frame/parts/render_images.h"

#include <optional>
#include <string>

namespace morvane {

/// Names and order are the keys of saved skins.
struct FormObjectProperties {
    BoolProp drawsColor; // the colour instead of the image
    ImageProp image;
    FillColorProp color;
    BoolProp takesMouseMoves;

    void declare(PropertyTable& table);
};

class CUIFormObj : public Control<IUIFormObj> {
public:
    STDMETHODIMP SetDrawColor(VARIANT_BOOL drawColor) noexcept override;
    STDMETHODIMP GetDrawColor(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetBackImageSec(IVexImageBase* section) noexcept override;
    STDMETHODIMP GetBackImageSec(IVexImageBase** result) noexcept override;
    STDMETHODIMP SetBackColor(IFillColor* fill) noexcept override;
    STDMETHODIMP GetBackColor(IFillColor** result) noexcept override;
    STDMETHODIMP SetBackBitmapPath(BSTR path, VARIANT_BOOL redrawNow, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetBackBitmapPath(BSTR* result) noexcept override;
    STDMETHODIMP SetShowBitmap(VARIANT_BOOL show) noexcept override;
    STDMETHODIMP IsShowBitmap(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetBackBitmap(std::int64_t bitmap, IVexRenderImage** result) noexcept override;
    STDMETHODIMP GetBackBitmap(std::int64_t* result) noexcept override;
    STDMETHODIMP DeleteBackBitmap() noexcept override;

protected:
    const ControlInfo& info() const noexcept override;
    void declareProperties(PropertyTable& table) override { m_properties.declare(table); }
    void render(IVexRenderDC& dc) override;
    HRESULT drawOnDc(IVexObjectDraw* objectDraw, VARIANT_BOOL* result) override;
    void letGo(const HostCache& former) override;

    Handled onFinalCreate() override;
    Handled onMouseEnter(const PointerNotice& notice) override;
    Handled onMouseLeave(const PointerNotice&) override { return Handled::No; }
    Handled onLeftButtonDown(const PointerNotice&) override { return Handled::No; }
    Handled onLeftButtonUp(const PointerNotice& notice) override;
    Handled onLeftDoubleClick(const PointerNotice&) override { return Handled::No; }
    Handled onSetFocus() override { return Handled::No; }
    Handled onKillFocus() override { return Handled::No; }
    Handled onDisposeMouseMove() override { return handledIf(m_properties.takesMouseMoves.isSet()); }
    Handled onDrawPreview() override { return Handled::No; }
    Handled onIsDragEnabled(VARIANT_BOOL& enabled) override;
    Handled onGetTabInfo(VARIANT_BOOL& takesTab, VARIANT_BOOL& drawsFocus) override;

private:
    FormObjectProperties m_properties;
    RenderImageSlot m_backImage;
    VARIANT_BOOL m_showsBitmap = VARIANT_FALSE; // as it was set
    std::optional<std::wstring> m_bitmapPath;
};

} // namespace morvane
