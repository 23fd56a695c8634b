// Pointer and keys of a host window, on their way to the router.
#include "ambrel/trace/trace.h"
#include "ambrel/window/window_core.h"
#include "ambrel/window/window_messages.h"

#include <windowsx.h>

namespace ambrel {

namespace {

constexpr LPARAM kWasDownBefore = 1 << 30; // of a key message: the key is held
constexpr WPARAM kSystemCommandBits = 0xFFF0;
constexpr WPARAM kMoveByCaption = SC_MOVE | HTCAPTION; // the system command for dragging a window by its caption

KeyFact keyOf(WPARAM wParam, LPARAM lParam) noexcept
{
    const auto isDown = [](int key) { return GetKeyState(key) < 0; };
    const bool isAltGr = isDown(VK_CONTROL) && isDown(VK_RMENU);
    return {static_cast<int>(wParam),
            isDown(VK_CONTROL),
            isDown(VK_MENU),
            isDown(VK_SHIFT),
            (lParam & kWasDownBefore) != 0,
            isAltGr};
}

bool showsCues(int key) noexcept
{
    return key == VK_TAB || key == VK_MENU || key == VK_F10 || (key >= VK_PRIOR && key <= VK_DOWN);
}

} // namespace

std::int64_t WindowCore::messageTimeMs() const noexcept
{
    // The platform judges double clicks by when a message was made; a clock moved by hand stands for it.
    const Clock& clock = Clock::instance();
    return clock.isFrozen() ? clock.nowMs() : GetMessageTime();
}

PointerFact WindowCore::factOf(WPARAM wParam, LPARAM lParam) const
{
    return {{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}, static_cast<unsigned>(wParam), messageTimeMs()};
}

void WindowCore::trackLeaving()
{
    if (m_trackingLeave)
        return;
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, window(), 0};
    m_trackingLeave = TrackMouseEvent(&track) != FALSE;
}

bool WindowCore::onMouseMove(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    trackLeaving();
    const PointerFact fact = factOf(wParam, lParam);
    if (m_outline.isRunning()) {
        if (wParam & MK_LBUTTON)
            moveOutline(fact.point);
        else
            endOutline(true); // its release went elsewhere
        return true;
    }
    const auto isFar = [&](int a, int b, int metric) { return std::abs(a - b) > GetSystemMetrics(metric); };
    if (m_dragArmed && !(wParam & MK_LBUTTON)) {
        m_dragArmed = false;
    } else if (m_dragArmed &&
               (isFar(fact.point.x, m_dragPress.x, SM_CXDRAG) || isFar(fact.point.y, m_dragPress.y, SM_CYDRAG))) {
        m_dragArmed = false;
        m_router.captureLost();
        ReleaseCapture();
        POINT pressed{m_dragPress.x, m_dragPress.y};
        ClientToScreen(window(), &pressed);
        SendMessageW(window(), WM_SYSCOMMAND, kMoveByCaption, MAKELPARAM(pressed.x, pressed.y));
        if (m_outline.isRunning())
            moveOutline(fact.point);
        return true;
    }
    const InputTarget before = m_router.hot();
    m_router.pointerMoved(fact);
    if (before != m_router.hot() && !m_router.hot())
        m_tip.dismiss(Clock::instance().nowMs());
    return true;
}

bool WindowCore::onMouseLeave(WPARAM, LPARAM, LRESULT&)
{
    m_trackingLeave = false;
    m_tip.dismiss(Clock::instance().nowMs());
    m_router.pointerLeftWindow();
    return true;
}

bool WindowCore::dragsWindow() const
{
    return m_traits.dragable && !IsZoomed(window());
}

bool WindowCore::onLeftDown(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    trackLeaving(); // a press can come without a move before it
    m_tip.dismiss(Clock::instance().nowMs());
    setKeyboardCues(false);
    const bool wasDragable = dragsWindow();
    const PointerFact fact = factOf(wParam, lParam);
    m_router.buttonDown(PointerButton::Left, fact);
    if (!window() || m_destroying || !dragsWindow())
        return true;
    // An object that made the window dragable while it was pressed wants this press to drag it; otherwise only objects
    // that let themselves be dragged do, and the window's bare ground.
    VARIANT_BOOL allowed = VARIANT_TRUE;
    if (ObjectNode* pressed = nodeOf(m_router.pressed()); pressed && wasDragable) {
        const ComPtr<IVexControlBase> control(coreOf(*pressed).control());
        if (control)
            control->IsDragabled(&allowed);
    }
    m_dragArmed = allowed != VARIANT_FALSE && !m_router.captured();
    m_dragPress = fact.point;
    return true;
}

bool WindowCore::onLeftUp(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    m_dragArmed = false;
    if (m_outline.isRunning()) {
        moveOutline(factOf(wParam, lParam).point);
        endOutline(true);
        return true;
    }
    m_router.buttonUp(PointerButton::Left, factOf(wParam, lParam));
    return true;
}

bool WindowCore::onRightDown(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    m_tip.dismiss(Clock::instance().nowMs());
    m_router.buttonDown(PointerButton::Right, factOf(wParam, lParam));
    return true;
}

bool WindowCore::onRightUp(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    m_router.buttonUp(PointerButton::Right, factOf(wParam, lParam));
    return false; // the platform makes a context-menu message of it
}

bool WindowCore::onWheel(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ScreenToClient(window(), &point);
    m_router.wheel(
        GET_WHEEL_DELTA_WPARAM(wParam),
        {{static_cast<int>(point.x), static_cast<int>(point.y)}, GET_KEYSTATE_WPARAM(wParam), messageTimeMs()});
    return false;
}

bool WindowCore::onCaptureChanged(WPARAM, LPARAM newOwner, LRESULT&)
{
    if (!m_changingCapture && reinterpret_cast<HWND>(newOwner) != window()) {
        endOutline(false);
        m_router.captureLost();
    }
    return true;
}

bool WindowCore::onKeyDown(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    const KeyFact key = keyOf(wParam, lParam);
    if (m_outline.isRunning()) {
        if (key.key == VK_ESCAPE)
            endOutline(false);
        return true;
    }
    const bool handled = m_keyHandledByFocus;
    m_tip.dismiss(Clock::instance().nowMs());
    if (showsCues(key.key))
        setKeyboardCues(true);
    if (key.key == VK_MENU && !key.repeated)
        m_altUsed = false;
    m_keyUsed = true; // also in a message loop that runs before the router comes back
    m_keyUsed = m_router.keyDown(key, handled);
    m_altUsed |= m_keyUsed && key.alt;
    return m_keyUsed;
}

bool WindowCore::onCharacter(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    return character({static_cast<wchar_t>(wParam), false, (lParam & kWasDownBefore) != 0});
}

bool WindowCore::onSystemCharacter(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    return character({static_cast<wchar_t>(wParam), true, (lParam & kWasDownBefore) != 0});
}

bool WindowCore::character(const CharacterFact& fact)
{
    const bool used = m_router.character(fact, m_keyHandledByFocus);
    if (used)
        setKeyboardCues(true);
    m_altUsed |= used && fact.alt;
    return used; // unused ones with Alt are the window menu's, and the platform's sound when it has no such entry
}

bool WindowCore::onSystemCommand(WPARAM command, LPARAM character, LRESULT&)
{
    if (beginsOutline(command, character))
        return true;
    // Alt was let go after it had been used with another key: the user does not want the window menu.
    return (command & kSystemCommandBits) == SC_KEYMENU && character == 0 && m_altUsed;
}

bool WindowCore::onGroupChoice(WPARAM, LPARAM control, LRESULT&)
{
    m_scene.chosen(reinterpret_cast<const void*>(control));
    return false;
}

bool WindowCore::onKeyUp(WPARAM wParam, LPARAM lParam, LRESULT&)
{
    m_keyUsed = false;
    return m_router.keyUp(keyOf(wParam, lParam));
}

bool WindowCore::onSetFocus(WPARAM, LPARAM, LRESULT&)
{
    m_router.windowFocused(true);
    return true;
}

bool WindowCore::onKillFocus(WPARAM newOwner, LPARAM, LRESULT&)
{
    // An editor's own little window takes the keyboard for the object that has the focus here.
    const auto owner = reinterpret_cast<HWND>(newOwner);
    if (owner && IsChild(window(), owner))
        keyboardWentTo(owner);
    else
        m_router.windowFocused(false);
    return true;
}

void WindowCore::setKeyboardCues(bool shown)
{
    if (m_keyboardCues == shown)
        return;
    m_keyboardCues = shown;
    if (ObjectNode* focused = focusNode())
        coreOf(*focused).invalidate();
}

bool WindowCore::onSetCursor(WPARAM, LPARAM where, LRESULT& result)
{
    if (LOWORD(where) != HTCLIENT)
        return false;
    // The control under the pointer, or the nearest around it that has one, gives the pointer its shape.
    ObjectNode* node = nodeOf(m_router.captured() ? m_router.captured() : m_router.hot());
    for (; node && node != &m_root.node(); node = node->parent()) {
        IVexControlBase* const control = coreOf(*node).control();
        ComPtr<IVexCursor> cursor;
        hyper handle = 0;
        if (!control || FAILED(control->GetCursorPtr(cursor.put())) || !cursor)
            continue;
        if (SUCCEEDED(cursor->GetCursorHandle(&handle)) && handle) {
            SetCursor(reinterpret_cast<HCURSOR>(handle));
            result = TRUE;
            return true;
        }
    }
    return false;
}

} // namespace ambrel
