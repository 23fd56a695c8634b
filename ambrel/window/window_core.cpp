#include "ambrel/window/window_core.h"

#include "ambrel/trace/trace.h"
#include "ambrel/window/tree_walk.h"
#include "ambrel/window/window_messages.h"

#include <algorithm>
#include <shellapi.h>

namespace ambrel {

namespace {

InputSettings systemSettings() noexcept
{
    InputSettings settings;
    settings.doubleClickMs = GetDoubleClickTime();
    settings.doubleClickSlop = std::max(1, GetSystemMetrics(SM_CXDOUBLECLK) / 2);
    settings.dragThreshold = std::max(1, GetSystemMetrics(SM_CXDRAG));
    return settings;
}

} // namespace

WindowCore::WindowCore(SkinObjectCore& root, IAmbrel& face)
    : m_root(root), m_face(face), m_scene(root.node(), m_messages, *this), m_router(m_scene, systemSettings())
{
    Clock::instance().add(*this);
}

WindowCore::~WindowCore()
{
    Clock::instance().remove(*this);
    m_router.shutDown();
}

bool WindowCore::create(HWND parent, const Rect& rect)
{
    if (m_window.handle())
        return false;
    if (m_destroying)
        startAfresh();
    HostWindow::Shape shape;
    shape.parent = m_parent = parent;
    shape.rect = {rect.left, rect.top, rect.right, rect.bottom};
    shape.style = WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    shape.style |= parent && !m_traits.popup ? WS_CHILD : WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    if (m_traits.resizable && !(shape.style & WS_CHILD))
        shape.style |= WS_THICKFRAME;
    const std::wstring title(m_root.name());
    shape.title = title.c_str();
    m_windowHold = ComPtr<IAmbrel>(&m_face);
    if (!m_window.create(*this, &m_face, shape)) {
        m_windowHold.reset();
        return false;
    }
    m_dpi = m_window.dpi();
    m_surface.setScale(m_dpi * 100 / 96);
    m_tip.setDpi(m_dpi);
    if (m_traits.perPixel || m_root.node().opacity() < 255)
        applyTraits();
    if (!m_fileReceivers.empty())
        DragAcceptFiles(window(), TRUE);
    RECT place{};
    GetWindowRect(window(), &place);
    m_lastPosition = {static_cast<int>(place.left), static_cast<int>(place.top)};
    RECT client{};
    GetClientRect(window(), &client);
    m_root.moveTo(morvane::fromWin32(client));
    return m_window.handle() != nullptr;
}

void WindowCore::startAfresh() noexcept
{
    // A root whose window has ended gets another one: what was under way ended with the first.
    m_router.restart(m_scene);
    m_requests = 0;
    m_destroying = m_recheckPosted = m_trackingLeave = m_capturesForApplication = false;
    m_dragArmed = m_keyUsed = m_altUsed = m_keyboardCues = m_wasShown = m_isGround = false;
}

void WindowCore::windowGone() noexcept
{
    m_tip.close();
    m_router.shutDown();
    // Its last reference may have been the platform window's: nothing of this is touched afterwards.
    const ComPtr<IAmbrel> last = std::move(m_windowHold);
}

IVexRes* WindowCore::resources() noexcept
{
    return m_root.resources().get(); // the root keeps it
}

void WindowCore::applyTraits()
{
    const HWND handle = window();
    if (!handle)
        return;
    auto style = static_cast<DWORD>(GetWindowLongPtrW(handle, GWL_STYLE));
    auto extended = static_cast<DWORD>(GetWindowLongPtrW(handle, GWL_EXSTYLE));
    if (!(style & WS_CHILD)) {
        style = m_traits.resizable ? style | WS_THICKFRAME : style & ~static_cast<DWORD>(WS_THICKFRAME);
        // Set anew each time: a layered window shows either pixels with their alpha or one opacity, as begun.
        extended &= ~static_cast<DWORD>(WS_EX_LAYERED);
    }
    SetWindowLongPtrW(handle, GWL_STYLE, static_cast<LONG_PTR>(style));
    SetWindowLongPtrW(handle, GWL_EXSTYLE, static_cast<LONG_PTR>(extended));
    const std::uint8_t opacity = m_root.node().opacity();
    if (!(style & WS_CHILD) && (m_traits.perPixel || opacity < 255)) {
        SetWindowLongPtrW(handle, GWL_EXSTYLE, static_cast<LONG_PTR>(extended | WS_EX_LAYERED));
        if (!m_traits.perPixel)
            SetLayeredWindowAttributes(handle, 0, opacity, LWA_ALPHA);
    }
    if ((style & WS_CHILD) && m_traits.blendsWithParent)
        SendMessageW(GetAncestor(handle, GA_PARENT), kGroundNeededMessage, 0, 0);
    SetWindowPos(handle, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    invalidate(m_root.node().rect());
}

bool WindowCore::setFocus(ObjectNode* node)
{
    const WeakNode former(focusNode());
    const WeakNode wanted(node);
    if (node && (&node->root() != &m_root.node() || !node->isShown() || !node->isUsable()))
        return false;
    const bool moved = m_router.setFocus(targetOf(node));
    for (const WeakNode& each : {former, wanted}) {
        if (each)
            coreOf(*each.get()).redraw();
    }
    return moved;
}

void WindowCore::nodeWithdrawn(ObjectNode&)
{
    const InputTarget formerHot = m_router.hot();
    m_router.sceneChanged();
    dismissTipUnless(formerHot);
    recheckSceneSoon();
}

void WindowCore::nodeDetached(ObjectNode& node) noexcept
{
    const auto lies = [](const void* subtree, InputTarget target) {
        return static_cast<const ObjectNode*>(subtree)->holds(*nodeOf(target));
    };
    const InputTarget formerHot = m_router.hot();
    m_router.objectsGone(lies, &node);
    dismissTipUnless(formerHot);
    if (m_dragRecorded && !m_router.isDragging())
        clearDragRecord();
    if (m_dragOver && node.holds(*m_dragOver.get()))
        m_dragOver.reset();
    recheckSceneSoon();
}

void WindowCore::finalCreatePending(ObjectNode& node)
{
    if (node.has(NodeFlag::AwaitsFinish))
        return;
    node.set(NodeFlag::AwaitsFinish, true);
    m_waitingForFinalCreate.emplace_back(&node);
}

void WindowCore::finalCreateDone(ObjectNode& node) noexcept
{
    node.set(NodeFlag::AwaitsFinish, false);
    // Most are finished right after they were made. Others leave an entry that is passed over: no search among
    // thousands.
    if (!m_waitingForFinalCreate.empty() && m_waitingForFinalCreate.back().get() == &node)
        m_waitingForFinalCreate.pop_back();
}

void WindowCore::objectEvent(ObjectNode& node, long id, hyper wParam, hyper lParam)
{
    if (m_receiver && m_receiver->objectEvent) {
        const ComPtr<ISkinObjResBase> face = faceOf(&node);
        m_receiver->objectEvent(m_receiver, face.get(), id, wParam, lParam);
    }
}

void WindowCore::sendToReceiver(HWND window, long message, hyper wParam, hyper lParam)
{
    trace(AMBREL_TRACE_FRAMEWORK, &m_face, message, wParam, lParam);
    if (m_receiver && m_receiver->frameworkMessage)
        m_receiver->frameworkMessage(m_receiver, reinterpret_cast<hyper>(window), message, wParam, lParam);
}

void WindowCore::toolTipChanged(ObjectNode& node)
{
    IVexControlBase* const control = coreOf(node).control();
    if (!control || m_router.hot() != targetOf(&node))
        return;
    morvane::Bstr text;
    control->VexGetToolTip(text.put());
    m_tip.offer(window(), reinterpret_cast<std::uint64_t>(coreOf(node).face()), text.str(), Clock::instance().nowMs());
    armTipTimer();
}

void WindowCore::armTipTimer()
{
    const std::int64_t due = m_tip.nextDue();
    if (!window())
        return;
    if (due == TipTiming::kNever) {
        KillTimer(window(), kTipTimer);
        return;
    }
    const std::int64_t wait = std::clamp<std::int64_t>(due - Clock::instance().nowMs(), 1, 60'000);
    SetTimer(window(), kTipTimer, static_cast<UINT>(wait), nullptr);
}

void WindowCore::clockMoved()
{
    const ComPtr<IAmbrel> hold(&m_face);
    m_tip.update(Clock::instance().nowMs());
}

void WindowCore::dismissTipUnless(InputTarget hot) noexcept
{
    if (m_router.hot() != hot)
        m_tip.dismiss(Clock::instance().nowMs());
}

void WindowCore::recheckSceneSoon() noexcept
{
    if (window() && !m_recheckPosted)
        m_recheckPosted = PostMessageW(window(), kSceneChangedMessage, 0, 0) != FALSE;
}

void WindowCore::setPointerCapture(bool captured)
{
    if (!window())
        return;
    m_changingCapture = true;
    if (captured)
        SetCapture(window());
    else if (GetCapture() == window() && !m_capturesForApplication)
        ReleaseCapture();
    m_changingCapture = false;
}

bool WindowCore::capturePointer(bool captured)
{
    if (!window())
        return false;
    m_capturesForApplication = captured;
    if (!captured) {
        m_router.releaseCapture();
        setPointerCapture(m_router.pressed() != 0);
        return true;
    }
    if (m_router.pressed())
        m_router.captureFor(m_router.pressed());
    setPointerCapture(true);
    return true;
}

void WindowCore::passOn(UINT message, bool pass)
{
    std::erase(m_passedOn, message);
    if (pass)
        m_passedOn.push_back(message);
}

void WindowCore::tellAll(VexMsgID id, hyper lParam1, hyper lParam2)
{
    walkBeneath(m_root.node(), [&](ObjectNode& node) {
        SkinObjectCore& core = coreOf(node);
        const ComPtr<ISkinObjResBase> hold(core.face());
        VexNotify notice{};
        notice.eVexMsgId = id;
        notice.lParam1 = lParam1;
        notice.lParam2 = lParam2;
        core.notify(notice);
        return false;
    });
}

void WindowCore::keyboardWentTo(HWND other)
{
    WeakNode owner;
    walkBeneath(m_root.node(), [&](ObjectNode& node) {
        const WeakNode asked(&node);
        SkinObjectCore& core = coreOf(node);
        const ComPtr<ISkinObjResBase> hold(core.face());
        hyper isOwner = 0;
        VexNotify notice{};
        notice.eVexMsgId = VEXSM_USER_SETFOCUS;
        notice.lParam1 = reinterpret_cast<hyper>(other);
        notice.lParam2 = reinterpret_cast<hyper>(&isOwner);
        core.notify(notice);
        if (isOwner)
            owner = asked;
        return isOwner != 0;
    });
    if (owner && owner.get() != focusNode())
        setFocus(owner.get());
}

} // namespace ambrel
