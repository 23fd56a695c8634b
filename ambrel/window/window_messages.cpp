#include "ambrel/window/window_messages.h"

#include "ambrel/trace/trace.h"
#include "ambrel/window/tree_walk.h"
#include "ambrel/window/window_core.h"

#include <algorithm>
#include <new>

namespace ambrel {

/// A message being handled; they nest.
struct WindowCore::Running {
    Running(WindowCore& owner, UINT message_, WPARAM wParam_, LPARAM lParam_) noexcept
        : core(owner), hold(&owner.m_face), outer(owner.m_running), message(message_), wParam(wParam_), lParam(lParam_)
    {
        core.m_running = this;
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { core.m_running = outer; }

    WindowCore& core;
    ComPtr<IAmbrel> hold; // released last
    Running* outer;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

namespace {

bool isKeyMessage(UINT message) noexcept
{
    return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}
bool isCharacterMessage(UINT message) noexcept
{
    return message == WM_CHAR || message == WM_SYSCHAR || message == WM_DEADCHAR || message == WM_SYSDEADCHAR;
}
bool isMouseMessage(UINT message) noexcept
{
    return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
}

/// An object that is not shown must not react to the pointer; releases still reach it, so that what it began can end.
bool needsToBeShown(UINT message) noexcept
{
    return isMouseMessage(message) && message != WM_LBUTTONUP && message != WM_RBUTTONUP && message != WM_MBUTTONUP;
}

} // namespace

const WindowCore::HandlerEntry* WindowCore::handlerFor(UINT message) noexcept
{
    using W = WindowCore;
    static constexpr HandlerEntry kHandlers[] = {
        {WM_PAINT, &W::onPaint},
        {WM_MOUSEMOVE, &W::onMouseMove},
        {WM_TIMER, &W::onTimer},
        {WM_NCHITTEST, &W::onHitTest},
        {WM_SETCURSOR, &W::onSetCursor},
        {WM_ERASEBKGND, &W::onEraseBackground},
        {WM_PRINTCLIENT, &W::onPrintClient},
        {WM_SIZE, &W::onSize},
        {WM_MOVE, &W::onMove},
        {WM_LBUTTONDOWN, &W::onLeftDown},
        {WM_LBUTTONDBLCLK, &W::onLeftDown},
        {WM_LBUTTONUP, &W::onLeftUp},
        {WM_RBUTTONDOWN, &W::onRightDown},
        {WM_RBUTTONUP, &W::onRightUp},
        {WM_MOUSEWHEEL, &W::onWheel},
        {WM_MOUSELEAVE, &W::onMouseLeave},
        {WM_CAPTURECHANGED, &W::onCaptureChanged},
        {WM_KEYDOWN, &W::onKeyDown},
        {WM_SYSKEYDOWN, &W::onKeyDown},
        {WM_KEYUP, &W::onKeyUp},
        {WM_SYSKEYUP, &W::onKeyUp},
        {WM_CHAR, &W::onCharacter},
        {WM_SYSCHAR, &W::onSystemCharacter},
        {WM_SYSCOMMAND, &W::onSystemCommand},
        {WM_SETFOCUS, &W::onSetFocus},
        {WM_KILLFOCUS, &W::onKillFocus},
        {WM_SHOWWINDOW, &W::onShowWindow},
        {WM_NCCALCSIZE, &W::onCalculateClient},
        {WM_GETMINMAXINFO, &W::onMinMaxInfo},
        {WM_DPICHANGED, &W::onDpiChanged},
        {WM_DROPFILES, &W::onDropFiles},
        {WM_DESTROY, &W::onDestroy},
        {kToolTipMessage, &W::onTipMessage},
        {kGroupChoiceMessage, &W::onGroupChoice},
        {kSceneChangedMessage, &W::onSceneChanged},
        {kGroundChangedMessage, &W::onGroundChanged},
        {kGroundNeededMessage, &W::onGroundNeeded},
    };
    const auto* found = std::find_if(std::begin(kHandlers), std::end(kHandlers),
                                     [&](const HandlerEntry& each) { return each.message == message; });
    return found == std::end(kHandlers) ? nullptr : found;
}

LRESULT WindowCore::windowMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    const Running running(*this, message, wParam, lParam);
    try {
        return dispatch(message, wParam, lParam);
    } catch (const std::bad_alloc&) {
        return m_window.defaultFor(message, wParam, lParam); // the window must go on living
    }
}

LRESULT WindowCore::dispatch(UINT message, WPARAM wParam, LPARAM lParam)
{
    trace(AMBREL_TRACE_WINDOW_MESSAGE, &m_face, static_cast<long>(message), static_cast<std::int64_t>(wParam), lParam);
    if (m_keyUsed && isCharacterMessage(message))
        return 0;
    LRESULT result = 0;
    const bool answered = serveRegistered(message, wParam, lParam, result);
    if (std::find(m_passedOn.begin(), m_passedOn.end(), message) != m_passedOn.end()) {
        if (const HWND parent = GetParent(window()))
            SendMessageW(parent, message, wParam, lParam);
    }
    if (const HandlerEntry* entry = handlerFor(message)) {
        LRESULT own = 0;
        if ((this->*entry->handler)(wParam, lParam, own))
            return answered && result ? result : own;
    }
    // A registered object that answers input has used it up; it cannot keep the platform from its own housekeeping.
    const bool isInput = isMouseMessage(message) || isKeyMessage(message) || message >= WM_USER;
    if (answered && isInput)
        return result;
    const LRESULT byDefault = m_window.defaultFor(message, wParam, lParam);
    return answered && result ? result : byDefault;
}

LRESULT WindowCore::defaultForCurrent()
{
    return m_running ? m_window.defaultFor(m_running->message, m_running->wParam, m_running->lParam) : 0;
}

bool WindowCore::serveRegistered(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    bool answered = false;
    m_keyHandledByFocus = false;
    m_messages.serve(message, [&](ObjectNode& node, bool withChildren) {
        if (&node.root() != &m_root.node() || (needsToBeShown(message) && !node.isShown()))
            return;
        const WeakNode alive(&node);
        const bool used = forward(node, message, wParam, lParam, result, false);
        answered |= used;
        if (used && alive && alive.get() == focusNode())
            m_keyHandledByFocus = true;
        if (withChildren && alive) {
            walkBeneath(node, [&](ObjectNode& child) {
                answered |= forward(child, message, wParam, lParam, result, true);
                return false;
            });
        }
    });
    return answered;
}

bool WindowCore::forward(ObjectNode& node, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result, bool fromParent)
{
    SkinObjectCore& core = coreOf(node);
    const ComPtr<ISkinObjResBase> hold(core.face());
    VexNotify notice{};
    notice.eWinMsgId = static_cast<long>(message);
    notice.lParam1 = static_cast<hyper>(wParam);
    notice.lParam2 = static_cast<hyper>(lParam);
    // Keys carry an indicator, null until somebody has used the key; other messages a place for their result.
    LRESULT used = 1;
    if (!isKeyMessage(message))
        notice.lParam3 = reinterpret_cast<hyper>(&result);
    else if (result)
        notice.lParam3 = reinterpret_cast<hyper>(&used);
    if (message == WM_MOUSEMOVE)
        notice.lParam4 = node.shownRect().contains(morvane::unpackPoint(lParam));
    notice.bChildren = fromParent ? VARIANT_TRUE : VARIANT_FALSE;
    const bool answered = core.notify(notice);
    if (answered && isKeyMessage(message))
        result = 1;
    return answered;
}

bool WindowCore::onTimer(WPARAM id, LPARAM procedure, LRESULT&)
{
    if (id == kTipTimer) {
        m_tip.update(Clock::instance().nowMs());
        armTipTimer();
        return true;
    }
    if (procedure)
        return false; // the platform calls it
    // Identifiers are shared by all objects of a window, and each knows its own: every object is told.
    tellAll(VEXSM_TIMER, static_cast<hyper>(id));
    return true;
}

bool WindowCore::onTipMessage(WPARAM text, LPARAM control, LRESULT&)
{
    const auto* const words = reinterpret_cast<const wchar_t*>(text);
    m_tip.offer(window(), static_cast<std::uint64_t>(control), words ? words : L"", Clock::instance().nowMs());
    armTipTimer();
    return true;
}

void WindowCore::finishWaitingObjects()
{
    while (!m_waitingForFinalCreate.empty()) {
        const std::vector<WeakNode> waiting = std::exchange(m_waitingForFinalCreate, {});
        for (const WeakNode& node : waiting) {
            if (!node || !node.get()->has(NodeFlag::AwaitsFinish))
                continue;
            node.get()->set(NodeFlag::AwaitsFinish, false);
            const ComPtr<IVexControlBase> control(coreOf(*node.get()).control());
            if (control)
                control->FinalCreate(VARIANT_TRUE);
        }
    }
}

bool WindowCore::onShowWindow(WPARAM shown, LPARAM, LRESULT&)
{
    if (!shown) {
        m_tip.dismiss(Clock::instance().nowMs());
        return false;
    }
    // Whoever shows the window means its objects, too.
    if (m_root.node().set(NodeFlag::Visible, true))
        invalidate(m_root.node().rect());
    finishWaitingObjects(); // what was attached without being finished
    if (m_traits.perPixel)
        paint(nullptr, nullptr); // the system shows such a window only once it has a picture
    if (std::exchange(m_wasShown, true) && m_traits.startsAfresh)
        tellAll(VEXSM_AUTOLOADINIT);
    return false;
}

bool WindowCore::onSceneChanged(WPARAM, LPARAM, LRESULT&)
{
    m_recheckPosted = false;
    const InputTarget formerHot = m_router.hot();
    m_router.sceneChanged();
    dismissTipUnless(formerHot);
    return true;
}

bool WindowCore::onDestroy(WPARAM, LPARAM, LRESULT&)
{
    m_destroying = true;
    m_tip.close();
    m_outline.end();
    m_face.RevokeDropTarget(); // the system would keep the target, and with it this window
    m_root.removeChildren(true);
    m_router.shutDown();
    if (m_dragRecorded)
        clearDragRecord();
    KillTimer(window(), kTipTimer);
    m_messages.removeAll();
    m_messages.removeAllWhole();
    return false;
}

} // namespace ambrel
