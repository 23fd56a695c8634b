// The push button: a picture per state, an optional graphic beside or above its text, and a size that can follow the
// text.
#pragma once

#include "controls/buttons/command_button/command_button_properties.h"
#include "controls/control_interfaces.h"
#include "frame/parts/active_flag.h"
#include "frame/parts/captioned.h"
#include "frame/parts/render_images.h"
#include "frame/parts/strip_graphic.h"
#include "frame/platform/handles.h"

#include <memory>

namespace morvane {

class CCmdButton : public StripGraphic<Captioned<ICmdButton, CommandButtonProperties>> {
public:
    STDMETHODIMP SetText(BSTR text) noexcept override;
    STDMETHODIMP GetButtonState(VEX_BUTTONSTATE* result) noexcept override;
    STDMETHODIMP SetButtonState(VEX_BUTTONSTATE state) noexcept override;
    STDMETHODIMP SetGraphicshIcon(std::int64_t icon, short x, short y) noexcept override;
    STDMETHODIMP GetGraphicshIcon(std::int64_t* result) noexcept override;
    STDMETHODIMP SetUpDownMode(VARIANT_BOOL stacked) noexcept override;
    STDMETHODIMP SetGraphicOffset(long x, long y) noexcept override;
    STDMETHODIMP GetGraphicOffset(long* x, long* y) noexcept override;
    STDMETHODIMP ShowText(VARIANT_BOOL show) noexcept override;
    STDMETHODIMP SetBackImageSec(VEX_BUTTONSTATE state, IVexImageBase* section) noexcept override;
    STDMETHODIMP GetBackImageSec(VEX_BUTTONSTATE state, IVexImageBase** result) noexcept override;
    STDMETHODIMP SetBackTextStyle(VEX_BUTTONSTATE state, IVexTextStyle* style) noexcept override;
    STDMETHODIMP GetBackTextStyle(VEX_BUTTONSTATE state, IVexTextStyle** result) noexcept override;
    STDMETHODIMP SetGraphicsImage(VEX_BUTTONSTATE state, IVexImageBase* section, VARIANT_BOOL redrawNow,
                                  VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetGraphicsImage(VEX_BUTTONSTATE state, IVexImageBase** result) noexcept override;
    STDMETHODIMP SetFileIcon(BSTR path) noexcept override;
    STDMETHODIMP GetTextLength(short* result) noexcept override;
    STDMETHODIMP SetActive(VARIANT_BOOL active) noexcept override;
    STDMETHODIMP IsActive(VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetGraphicshBitmap(std::int64_t bitmap, VARIANT_BOOL redrawNow) noexcept override;
    STDMETHODIMP GetGraphicshBitmap(std::int64_t* result) noexcept override;
    STDMETHODIMP SetBackImageFile(VEX_BUTTONSTATE state, BSTR path, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP SetBackhBitmap(VEX_BUTTONSTATE state, std::int64_t bitmap, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetBackhBitmap(VEX_BUTTONSTATE state, std::int64_t* result) noexcept override;
    STDMETHODIMP SetMinWidth(long width) noexcept override;
    STDMETHODIMP SetMaxWidth(long width) noexcept override;
    STDMETHODIMP SetMinHeight(long height) noexcept override;
    STDMETHODIMP SetMaxHeight(long height) noexcept override;
    STDMETHODIMP GetMinWidth(long* result) noexcept override;
    STDMETHODIMP GetMaxWidth(long* result) noexcept override;
    STDMETHODIMP GetMinHeight(long* result) noexcept override;
    STDMETHODIMP GetMaxHeight(long* result) noexcept override;

protected:
    const ControlInfo& info() const noexcept override;
    void render(IVexRenderDC& dc) override;
    void letGo(const HostCache& former) override;

    FittedTo fittedTo(Size control, int textLength) override;
    const TextStyleProp& measuringStyle() override { return lookOf(m_state).textStyle; }
    int widthBesideText() override { return saturatingAdd(widthTakenByGraphic(), m_properties.graphic.x.value()); }

    Handled onFinalCreate() override;

private:
    /// Where the graphic comes from, in the order of preference.
    enum class GraphicSource { None, Strip, Image, Section };

    struct Back {
        RenderImageSlot image;
        UniqueBitmap bitmap; // the application's, ours since it was given
    };

    StateLook& lookOf(ButtonState state) { return m_properties.look[static_cast<std::size_t>(state)]; }
    /// The look of an interface method's index; null where that leads nowhere.
    StateLook* lookAt(VEX_BUTTONSTATE state)
    {
        return isButtonState(state) ? &lookOf(static_cast<ButtonState>(state)) : nullptr;
    }
    /// The look that is drawn: an inactive button has its own while it is in its normal state.
    StateLook& currentLook()
    {
        return !m_active.isActive() && m_state == ButtonState::Normal ? m_properties.inactive : lookOf(m_state);
    }

    void updateState();
    bool isCursorInside();
    void drawBackground(IVexRenderDC& dc, const Rect& control);
    int drawGraphic(IVexRenderDC& dc, const Rect& control, const GraphicPlacement& placement);
    void drawText(IVexRenderDC& dc, const Rect& control, const GraphicPlacement& placement, int graphicWidth);
    GraphicSource graphicSource();
    Size graphicSize(GraphicSource source);

    int widthTakenByGraphic();
    HRESULT setLimit(LongProp& limit, long value);

    ButtonState m_state = ButtonState::Normal;
    bool m_isStateForced = false;
    ActiveFlag m_active;
    RenderImageSlot m_graphic;
    std::int64_t m_graphicHandle = 0;
    UniqueBitmap m_fileBitmap; // behind m_graphicHandle when that came from SetFileIcon
    std::unique_ptr<std::array<Back, kButtonStateCount>> m_back; // by ButtonState; made when the first is given
};

} // namespace morvane
