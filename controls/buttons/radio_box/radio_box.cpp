#include "controls/buttons/radio_box/radio_box.h"

#include "frame/parts/property_access.h"

namespace morvane {

namespace {
constexpr UINT kChildImageClicked = 3024;
}

void RadioBoxProperties::declare(PropertyTable& table)
{
    static constexpr std::array<std::wstring_view, 2> kValues = {L"Unchecked", L"Checked"};
    static constexpr std::array<std::wstring_view, kRadioStateCount> kStates = {L"Normal", L"Hot", L"Press",
                                                                                L"Disabled"};
    table.group(L"DrawMode").style(drawsColor, L"DrawColor", false);
    for (std::size_t value = 0; value < kValues.size(); ++value) {
        const PropertyGroup group = table.group(kValues[value]);
        for (std::size_t state = 0; state < kStates.size(); ++state) {
            Look& look = looks[value * kStates.size() + state];
            const PropertyGroup stateGroup = group.group(kStates[state]);
            stateGroup.style(look.back, L"Back");
            stateGroup.style(look.color, L"Color");
            stateGroup.style(look.box, L"Box");
            stateGroup.style(look.graphics, L"Graphics");
            stateGroup.style(look.textStyle, L"TextStyle");
        }
    }
    const PropertyGroup textGroup = table.group(L"Text");
    textGroup.style(caption.text, L"Text", L"RadioBox");
    textGroup.style(caption.isShown, L"ShowText", true);
    table.group(L"Tooltip").style(caption.toolTip, L"Tooltip");

    const PropertyGroup graphics = table.group(L"Graphics");
    graphics.style(graphic.isStacked, L"UpDownMode");
    graphics.style(graphic.isRightAligned, L"RightAlign");
    graphics.style(graphic.x, L"x");
    graphics.style(graphic.y, L"y");
    graphics.style(graphicWidth, L"width");
    graphics.style(graphicHeight, L"height");

    table.group(L"Group").style(groupId, L"GroupID");
    table.group(L"Cursor").style(cursor, L"Cursor");
    autoSize.declare(table);
}

const ControlInfo& CRadioBox::info() const noexcept
{
    static const ControlInfo kInfo{L"RadioBox", 2088, 2087, 2086, iidOf<_IRadioBoxEvents>()};
    return kInfo;
}

void* CRadioBox::findInterface(REFIID iid) noexcept
{
    return iid == kRadioMemberIid ? static_cast<RadioMember*>(this) : BoxControl::findInterface(iid);
}

void CRadioBox::letGo(const HostCache& former)
{
    m_blinkTimer.stop();
    leaveGroups();
    for (GraphicBitmap& bitmap : m_bitmaps)
        bitmap.image.destroy(former);
}

// Value ---------------------------------------------------------------------------------------------------------------

STDMETHODIMP CRadioBox::SetValue(VEXRADIOBOX_VALUE value, VARIANT_BOOL redrawNow) noexcept
{
    if (value != VEXRADIOBOX_UNCHECKED && value != VEXRADIOBOX_CHECKED)
        return E_INVALIDARG;
    return guarded([&] {
        const bool isChecked = value == VEXRADIOBOX_CHECKED;
        if (isChecked != m_isChecked) {
            if (isChecked && !m_group)
                return S_FALSE; // a box outside any group has nobody to uncheck the others
            m_isChecked = isChecked;
            if (isChecked)
                ComPtr<IVexRadioGroup>(m_group)->SetRadio(this);
        }
        redrawIf(redrawNow);
        return S_OK;
    });
}

STDMETHODIMP CRadioBox::GetValue(VEXRADIOBOX_VALUE* result) noexcept
{
    return returning(result, [&] { return m_isChecked ? VEXRADIOBOX_CHECKED : VEXRADIOBOX_UNCHECKED; });
}

// Notifications -------------------------------------------------------------------------------------------------------

Handled CRadioBox::onFinalCreate()
{
    Control::onFinalCreate();
    m_blinkTimer.resume(host().window);
    joinGroup();
    return Handled::Yes;
}

Handled CRadioBox::onAccessConfigured(bool isRead)
{
    Control::onAccessConfigured(isRead);
    m_blinkTimer.resume(host().window);
    if (isRead)
        joinGroup();
    return Handled::No;
}

Handled CRadioBox::onDestroying()
{
    stopBlinking();
    leaveGroups();
    return Control::onDestroying();
}

Handled CRadioBox::onEnableObject(const EnableNotice& notice)
{
    m_state = notice.enable ? RadioState::Normal : RadioState::Disable;
    if (notice.redraw)
        redraw();
    return Handled::Yes;
}

/// A disabled box stays so until it is enabled.
void CRadioBox::enterState(RadioState state)
{
    if (m_state != RadioState::Disable)
        m_state = state;
}

void CRadioBox::trackChildImage(Point pointer)
{
    m_child.hasMouse = m_child.isSet && m_child.picture && childImageRect(ownRect()).contains(pointer);
}

Handled CRadioBox::onMouseMove(const PointerNotice& notice)
{
    trackChildImage(notice.point);
    return Control::onMouseMove(notice);
}

Handled CRadioBox::onMouseEnter(const PointerNotice& notice)
{
    trackChildImage(notice.point);
    enterState(RadioState::Hot);
    sendToolTip();
    redraw();
    return Handled::Yes;
}

Handled CRadioBox::onMouseLeave(const PointerNotice&)
{
    m_child.hasMouse = false;
    enterState(RadioState::Normal);
    redraw();
    return Handled::Yes;
}

Handled CRadioBox::onLeftButtonDown(const PointerNotice&)
{
    if (m_child.isSet && m_child.hasMouse) {
        sendToHost(kChildImageClicked, reinterpret_cast<WPARAM>(static_cast<IRadioBox*>(this)), 0);
        return Handled::No;
    }
    enterState(RadioState::Press);
    redraw();
    return Handled::Yes;
}

Handled CRadioBox::onLeftButtonUp(const PointerNotice& notice)
{
    if (!isDesignTime() && !m_isChecked)
        if (const ComPtr<IVexRadioGroup> group = m_group)
            group->SetRadio(this);
    enterState(RadioState::Hot);
    redraw();
    raise(notice);
    return Handled::Yes;
}

Handled CRadioBox::onLeftDoubleClick(const PointerNotice&)
{
    redraw();
    return Handled::Yes;
}

Handled CRadioBox::onTimer(UINT_PTR id)
{
    if (!m_blinkTimer.ticksAs(id))
        return Handled::No;
    m_isBlinkOn = !m_isBlinkOn;
    redraw();
    return Handled::Yes;
}

// State and text ------------------------------------------------------------------------------------------------------

STDMETHODIMP CRadioBox::GetButtonState(VEX_RADIOBOXSTATE* result) noexcept
{
    return returning(result, [&] { return static_cast<VEX_RADIOBOXSTATE>(m_state); });
}

STDMETHODIMP CRadioBox::SetButtonState(VEX_RADIOBOXSTATE state, VARIANT_BOOL redrawNow) noexcept
{
    if (!isRadioState(state))
        return E_INVALIDARG;
    return guarded([&] {
        if (m_state == RadioState::Disable)
            return S_FALSE;
        m_state = static_cast<RadioState>(state);
        redrawIf(redrawNow);
        return S_OK;
    });
}

STDMETHODIMP CRadioBox::SetText(BSTR text, VARIANT_BOOL redrawNow) noexcept
{
    return changeText(text, [&] { redrawIf(redrawNow); });
}

STDMETHODIMP CRadioBox::ShowText(VARIANT_BOOL show, VARIANT_BOOL redrawNow) noexcept
{
    return storeThen(m_properties.caption.isShown, show, [&] { redrawIf(redrawNow); });
}

// Blinking
// --------------------------------------------------------------------------------------------------------------

STDMETHODIMP CRadioBox::StartBlink(short timerId, short intervalMs) noexcept
{
    return guarded([&] {
        m_isBlinkOn = true;
        m_blinkTimer.start(host().window, static_cast<unsigned short>(timerId), intervalMs);
        redraw();
    });
}

void CRadioBox::stopBlinking()
{
    m_blinkTimer.stop();
    m_isBlinkOn = false;
}

STDMETHODIMP CRadioBox::StopBlink() noexcept
{
    return guarded([&] {
        stopBlinking();
        redraw();
    });
}

} // namespace morvane
