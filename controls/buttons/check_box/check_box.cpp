#include "controls/buttons/check_box/check_box.h"

#include "frame/parts/property_access.h"

namespace morvane {

void CheckBoxProperties::declare(PropertyTable& table)
{
    static constexpr std::array<std::wstring_view, kCheckValueCount> kValues = {L"Unchecked", L"Checked",
                                                                                L"HalfChecked"};
    static constexpr std::array<std::wstring_view, kCheckStateCount> kStates = {L"Normal", L"Hot", L"Press",
                                                                                L"Disabled"};
    for (std::size_t value = 0; value < kValues.size(); ++value) {
        const PropertyGroup group = table.group(kValues[value]);
        for (std::size_t state = 0; state < kStates.size(); ++state)
            values[value].states[state].declare(group.group(kStates[state]));
        values[value].inactive.declare(group.group(L"Inactive"));
    }

    const PropertyGroup textGroup = table.group(L"Text");
    textGroup.content(caption.text, L"Text", L"CheckBox");
    textGroup.content(caption.isShown, L"ShowText", true);
    table.group(L"Tooltip").content(caption.toolTip, L"Tooltip");
    table.group(L"ThreeState").content(threeState, L"ThreeState");
    table.group(L"Cursor").style(cursor, L"Cursor");
    table.group(L"PushButtonLike").style(looksLikePushButton, L"Value", false);

    const PropertyGroup graphics = table.group(L"Graphics");
    graphics.style(graphicX, L"x", 0);
    graphics.style(graphicY, L"y", 0);

    autoSize.declare(table);

    const PropertyGroup misc = table.group(L"Misc");
    misc.style(keepsValueOnClick, L"DisbaleAutoCheck");                     // saved skins carry this spelling
    misc.style(stepsThroughHalf, L"AutoChangeThreeState", VARIANT_BOOL{1}); // and this number, which counts as true
}

const ControlInfo& CVexCheckBox::info() const noexcept
{
    static const ControlInfo kInfo{L"CheckBox", 2094, 2093, 2092, iidOf<_IVexCheckBoxEvents>()};
    return kInfo;
}

void CVexCheckBox::letGo(const HostCache& former)
{
    m_graphic.destroy(former);
}

// Notifications -------------------------------------------------------------------------------------------------------

Handled CVexCheckBox::onAutoLoadInit()
{
    m_value = CheckValue::Unchecked;
    return Handled::Yes;
}

Handled CVexCheckBox::onMouseEnter(const PointerNotice&)
{
    sendToolTip();
    redrawOwnRect();
    return Handled::Yes;
}

Handled CVexCheckBox::onMouseMove(const PointerNotice& notice)
{
    if (!isMouseOver()) {
        setMouseOver(true);
        redraw();
    }
    raise(notice);
    return Handled::No;
}

Handled CVexCheckBox::onMouseLeave(const PointerNotice&)
{
    setMouseOver(false);
    redrawOwnRect();
    return Handled::Yes;
}

Handled CVexCheckBox::onLeftButtonDown(const PointerNotice& notice)
{
    if (!isEnabled())
        return Handled::No;
    redrawOwnRect();
    raise(notice);
    return Handled::Yes;
}

Handled CVexCheckBox::onLeftButtonUp(const PointerNotice& notice)
{
    if (!isEnabled())
        return Handled::No;
    if (!isDesignTime())
        step();
    redrawOwnRect();
    raise(notice);
    return Handled::Yes;
}

Handled CVexCheckBox::onLeftDoubleClick(const PointerNotice&)
{
    redrawOwnRect();
    return Handled::Yes;
}

// Value and state -----------------------------------------------------------------------------------------------------

void CVexCheckBox::step()
{
    if (m_properties.keepsValueOnClick.isExactlyTrue())
        return;
    const CheckStepping stepping{m_properties.threeState.isSet(), m_properties.stepsThroughHalf.isSet()};
    SetValue(static_cast<VEXCHECKBOX_VALUE>(nextCheckValue(m_value, stepping)));
}

STDMETHODIMP CVexCheckBox::GetValue(VEXCHECKBOX_VALUE* result) noexcept
{
    return returning(result, [&] { return static_cast<VEXCHECKBOX_VALUE>(m_value); });
}

STDMETHODIMP CVexCheckBox::SetValue(VEXCHECKBOX_VALUE value) noexcept
{
    if (!isCheckValue(value))
        return E_INVALIDARG;
    return guarded([&] {
        // A box without the property refuses; one whose property is off takes the value all the same.
        if (value == VEXCHECKBOX_HALFCHECKED && !m_properties.threeState)
            return S_FALSE;
        m_value = static_cast<CheckValue>(value);
        redrawOwnRect();
        return S_OK;
    });
}

STDMETHODIMP CVexCheckBox::GetButtonState(VEX_CHECKBOXSTATE* result) noexcept
{
    return returning(result, [&] { return static_cast<VEX_CHECKBOXSTATE>(m_state); });
}

STDMETHODIMP CVexCheckBox::SetButtonState(VEX_CHECKBOXSTATE state) noexcept
{
    if (!isCheckState(state))
        return E_INVALIDARG;
    return guarded([&] {
        m_state = static_cast<CheckState>(state);
        redrawOwnRect();
    });
}

STDMETHODIMP CVexCheckBox::SetThreeState(VARIANT_BOOL threeState) noexcept
{
    return storeThen(m_properties.threeState, threeState, [this] { redrawOwnRect(); });
}

STDMETHODIMP CVexCheckBox::GetThreeState(VARIANT_BOOL* result) noexcept
{
    return fetch(m_properties.threeState, result);
}

STDMETHODIMP CVexCheckBox::SetActive(VARIANT_BOOL active) noexcept
{
    return guarded([&] {
        if (!m_active.set(active))
            return S_FALSE;
        redrawOwnRect();
        return S_OK;
    });
}

STDMETHODIMP CVexCheckBox::IsActive(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_active.isActive(); });
}

// Text ----------------------------------------------------------------------------------------------------------------

STDMETHODIMP CVexCheckBox::SetText(BSTR text) noexcept
{
    return changeText(text, [this] { redrawOwnRect(); });
}

STDMETHODIMP CVexCheckBox::ShowText(VARIANT_BOOL show) noexcept
{
    return storeThen(m_properties.caption.isShown, show, [this] { redrawOwnRect(); });
}

STDMETHODIMP CVexCheckBox::SetPushButtonLike(VARIANT_BOOL pushButtonLike) noexcept
{
    return store(m_properties.looksLikePushButton, pushButtonLike);
}

STDMETHODIMP CVexCheckBox::IsPushButtonLike(VARIANT_BOOL* result) noexcept
{
    return fetch(m_properties.looksLikePushButton, result);
}

int CVexCheckBox::widthBesideText()
{
    long width = 0;
    if (const ComPtr<IVexImageBase> box = currentLook().image.section())
        box->GetWidth(&width);
    return static_cast<int>(width);
}

// Graphics ------------------------------------------------------------------------------------------------------------

StateLook* CVexCheckBox::lookAt(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value)
{
    const std::int64_t index = std::int64_t{value} * kCheckStateCount + state;
    if (state < 0 || value < 0 || index >= kCheckValueCount * kCheckStateCount)
        return nullptr;
    ValueLooks& looks = m_properties.values[static_cast<std::size_t>(index / kCheckStateCount)];
    return &looks.states[static_cast<std::size_t>(index % kCheckStateCount)];
}

STDMETHODIMP CVexCheckBox::SetGraphics(std::int64_t handle, VARIANT_BOOL isIcon) noexcept
{
    if (handle == 0)
        return S_FALSE;
    return guarded([&] {
        m_graphic.destroy(host());
        m_graphicHandle = handle;
        m_isGraphicIcon = isIcon == VARIANT_TRUE;
        return S_OK;
    });
}

STDMETHODIMP CVexCheckBox::SetImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value, IVexImageBase* section) noexcept
{
    return storeIn(lookAt(state, value), &StateLook::graphics, section);
}

STDMETHODIMP CVexCheckBox::GetImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value, IVexImageBase** result) noexcept
{
    return fetchFrom(lookAt(state, value), &StateLook::graphics, result);
}

STDMETHODIMP CVexCheckBox::SetGraphicsImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value, IVexImageBase* section,
                                            VARIANT_BOOL redrawNow, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) {
        StateLook* const look = lookAt(state, value);
        if (!look)
            return S_FALSE;
        look->graphics.setSection(section);
        redrawIf(redrawNow);
        done = VARIANT_TRUE;
        return S_OK;
    });
}

STDMETHODIMP CVexCheckBox::GetGraphicsImage(VEX_CHECKBOXSTATE state, VEXCHECKBOX_VALUE value,
                                            IVexImageBase** result) noexcept
{
    return fetchFrom(lookAt(state, value), &StateLook::graphics, result, S_FALSE);
}

} // namespace morvane
