// The check box: a box chosen by value and state, a text beside it, a click that cycles two or three values.
#pragma once

#include "controls/buttons/check_box/check_box_properties.h"
#include "controls/control_interfaces.h"
#include "frame/parts/active_flag.h"
#include "frame/parts/box_control.h"
#include "frame/parts/render_images.h"

namespace morvane {

class CVexCheckBox : public BoxControl<IVexCheckBox, CheckBoxProperties> {
public:
    STDMETHODIMP SetText(BSTR text) noexcept override;
    STDMETHODIMP GetButtonState(VEX_CHECKBOXSTATE* result) noexcept override;
    STDMETHODIMP SetButtonState(VEX_CHECKBOXSTATE state) noexcept override;
    STDMETHODIMP GetValue(VEXCHECKBOX_VALUE* result) noexcept override;
    STDMETHODIMP SetValue(VEXCHECKBOX_VALUE value) noexcept override;
    STDMETHODIMP SetThreeState(VARIANT_BOOL threeState) noexcept override;
    STDMETHODIMP GetThreeState(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP ShowText(VARIANT_BOOL show) noexcept override;
    STDMETHODIMP SetPushButtonLike(VARIANT_BOOL pushButtonLike) noexcept override;
    STDMETHODIMP IsPushButtonLike(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetActive(VARIANT_BOOL active) noexcept override;
    STDMETHODIMP IsActive(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetGraphics(std::int64_t handle, VARIANT_BOOL isIcon) noexcept override;
    STDMETHODIMP SetImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value, IVexImageBase* section) noexcept override;
    STDMETHODIMP GetImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value, IVexImageBase** result) noexcept override;
    STDMETHODIMP SetGraphicsImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value, IVexImageBase* section,
                                  VARIANT_BOOL redrawNow, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetGraphicsImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value,
                                  IVexImageBase** result) noexcept override;

protected:
    const ControlInfo& info() const noexcept override;
    void render(IVexRenderDC& dc) override;
    HRESULT drawOnDc(IVexObjectDraw* objectDraw, VARIANT_BOOL* result) override;
    void letGo(const HostCache& former) override;

    const TextStyleProp& measuringStyle() override { return lookOf(CheckValue::Unchecked).textStyle; }
    int widthBesideText() override;

    Handled onAutoLoadInit() override;
    Handled onMouseEnter(const PointerNotice& notice) override;
    Handled onMouseMove(const PointerNotice& notice) override;
    Handled onMouseLeave(const PointerNotice& notice) override;
    Handled onLeftButtonDown(const PointerNotice& notice) override;
    Handled onLeftButtonUp(const PointerNotice& notice) override;
    Handled onLeftDoubleClick(const PointerNotice& notice) override;
    Handled onDrawPreview() override { return Handled::No; }

private:
    using ValueLooks = CheckBoxProperties::ValueLooks;

    ValueLooks& looksOf(CheckValue value) { return m_properties.values[static_cast<std::size_t>(value)]; }
    StateLook& lookOf(CheckValue value) { return looksOf(value).states[static_cast<std::size_t>(m_state)]; }
    /// The look that is drawn: an inactive box has its own while it is in its normal state.
    StateLook& currentLook();
    /// The look of an interface method's indexes; null for indexes that lead nowhere. States past the last one lead on
    /// into the looks of the next value, as clients know from one array of them all.
    StateLook* lookAt(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value);

    void updateState();
    void step();

    Rect boxRect(const Rect& control);
    Rect textRect(const Rect& control);
    Size graphicSectionSize();
    Rect graphicSectionRect(const Rect& control, Size size);
    RenderImageSlot& graphic();

    CheckState m_state = CheckState::Normal;
    CheckValue m_value = CheckValue::Unchecked;
    ActiveFlag m_active;
    std::int64_t m_graphicHandle = 0; // the application's
    bool m_isGraphicIcon = false;
    RenderImageSlot m_graphic; // made from the handle when it is first drawn
};

} // namespace morvane
