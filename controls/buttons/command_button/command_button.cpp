#include "controls/buttons/command_button/command_button.h"

#include "frame/parts/property_access.h"

namespace morvane {

void CommandButtonProperties::declare(PropertyTable& table)
{
    static constexpr std::array<std::wstring_view, kButtonStateCount> kStates = {L"Normal", L"Press", L"Disabled",
                                                                                 L"Hot", L"Focus"};
    for (std::size_t state = 0; state < kStates.size(); ++state)
        look[state].declare(table.group(kStates[state]));
    inactive.declare(table.group(L"Inactive"));

    const PropertyGroup textGroup = table.group(L"Text");
    textGroup.content(caption.text, L"Text", L"PushButton");
    textGroup.content(caption.isShown, L"ShowText", true);
    table.group(L"Tooltip").content(caption.toolTip, L"Tooltip", L"");

    const PropertyGroup graphics = table.group(L"Graphics");
    graphics.style(graphic.isStacked, L"UpDownMode");
    graphics.style(graphic.isRightAligned, L"RightAlign");
    graphics.style(graphic.x, L"x", 0);
    graphics.style(graphic.y, L"y", 0);

    autoSize.declare(table);

    const PropertyGroup hotkey = table.group(L"Hotkey");
    hotkey.style(hotkeys[0], L"Hotkey1");
    hotkey.style(hotkeys[1], L"Hotkey2");
    hotkey.style(activatedByBackspace, L"IsBackspace");
    hotkey.style(activatedByEnter, L"IsEnter");
    table.group(L"Cursor").style(cursor, L"Cursor");
}

const ControlInfo& CCmdButton::info() const noexcept
{
    static const ControlInfo kInfo{L"Button", 2082, 2081, 2080, iidOf<_ICmdButtonEvents>()};
    return kInfo;
}

void CCmdButton::letGo(const HostCache& former)
{
    m_graphic.destroy(former);
    if (m_back)
        for (Back& back : *m_back)
            back.image.destroy(former);
}

// Notifications -------------------------------------------------------------------------------------------------------

Handled CCmdButton::onFinalCreate()
{
    Control::onFinalCreate();
    registerWindowMessage(WM_RBUTTONUP);
    return Handled::Yes;
}

// Text ----------------------------------------------------------------------------------------------------------------

STDMETHODIMP CCmdButton::SetText(BSTR text) noexcept
{
    return changeText(text, [this] { redraw(); });
}

STDMETHODIMP CCmdButton::ShowText(VARIANT_BOOL show) noexcept
{
    return storeThen(m_properties.caption.isShown, show, [this] { redraw(); });
}

STDMETHODIMP CCmdButton::GetTextLength(short* result) noexcept
{
    return filling(result, [&](short& length) {
        const Bstr text = m_properties.caption.text.value();
        const ComPtr<IVexTextStyle> style = lookOf(m_state).textStyle.style();
        if (!text.get() || !style)
            return S_FALSE;
        if (const auto extent = measureText(*style, text, {1000, 100}))
            length = static_cast<short>(extent->width);
        return S_OK;
    });
}

// State ---------------------------------------------------------------------------------------------------------------

STDMETHODIMP CCmdButton::GetButtonState(VEX_BUTTONSTATE* result) noexcept
{
    return returning(result, [&] { return static_cast<VEX_BUTTONSTATE>(m_state); });
}

STDMETHODIMP CCmdButton::SetButtonState(VEX_BUTTONSTATE state) noexcept
{
    if (!isButtonState(state))
        return E_INVALIDARG;
    return guarded([&] {
        m_state = static_cast<ButtonState>(state);
        m_isStateForced = m_state != ButtonState::Normal;
        if (!m_isStateForced)
            forgetFocus();
        redraw();
    });
}

STDMETHODIMP CCmdButton::SetActive(VARIANT_BOOL active) noexcept
{
    return guarded([&] {
        if (!m_active.set(active))
            return S_FALSE;
        forgetFocus();
        redraw();
        return S_OK;
    });
}

STDMETHODIMP CCmdButton::IsActive(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_active.isActive(); });
}

// Background and text style
// ---------------------------------------------------------------------------------------------

STDMETHODIMP CCmdButton::SetBackImageSec(VEX_BUTTONSTATE state, IVexImageBase* section) noexcept
{
    return storeIn(lookAt(state), &StateLook::image, section);
}

STDMETHODIMP CCmdButton::GetBackImageSec(VEX_BUTTONSTATE state, IVexImageBase** result) noexcept
{
    return fetchFrom(lookAt(state), &StateLook::image, result);
}

STDMETHODIMP CCmdButton::SetBackTextStyle(VEX_BUTTONSTATE state, IVexTextStyle* style) noexcept
{
    return storeIn(lookAt(state), &StateLook::textStyle, style);
}

STDMETHODIMP CCmdButton::GetBackTextStyle(VEX_BUTTONSTATE state, IVexTextStyle** result) noexcept
{
    return fetchFrom(lookAt(state), &StateLook::textStyle, result);
}

// Size that follows the text
// ----------------------------------------------------------------------------------------------

int CCmdButton::widthTakenByGraphic()
{
    // A strip counts with all its frames; saved positions depend on it.
    return hasStrip() ? strip().fullWidth() : graphicSize(graphicSource()).width;
}

CCmdButton::FittedTo CCmdButton::fittedTo(Size, int textLength)
{
    return {textLength, widthTakenByGraphic(), m_properties.graphic.x.value()};
}

HRESULT CCmdButton::setLimit(LongProp& limit, long value)
{
    return guarded([&] {
        if (limit.value() == value)
            return S_FALSE;
        limit.set(static_cast<int>(value));
        fitToText();
        redraw();
        return S_OK;
    });
}

STDMETHODIMP CCmdButton::SetMinWidth(long width) noexcept
{
    return setLimit(m_properties.autoSize.minWidth(), width);
}
STDMETHODIMP CCmdButton::SetMaxWidth(long width) noexcept
{
    return setLimit(m_properties.autoSize.maxWidth(), width);
}
STDMETHODIMP CCmdButton::SetMinHeight(long height) noexcept
{
    return setLimit(m_properties.autoSize.minHeight(), height);
}
STDMETHODIMP CCmdButton::SetMaxHeight(long height) noexcept
{
    return setLimit(m_properties.autoSize.maxHeight(), height);
}

STDMETHODIMP CCmdButton::GetMinWidth(long* result) noexcept
{
    return fetch(m_properties.autoSize.minWidth(), result);
}
STDMETHODIMP CCmdButton::GetMaxWidth(long* result) noexcept
{
    return fetch(m_properties.autoSize.maxWidth(), result);
}
STDMETHODIMP CCmdButton::GetMinHeight(long* result) noexcept
{
    return fetch(m_properties.autoSize.minHeight(), result);
}
STDMETHODIMP CCmdButton::GetMaxHeight(long* result) noexcept
{
    return fetch(m_properties.autoSize.maxHeight(), result);
}

} // namespace morvane
