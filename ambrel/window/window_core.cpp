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

void forget(std::vector<WeakNode>& list, const ObjectNode* node) noexcept
{
    std::erase_if(list, [&](const WeakNode& each) { return !each || each.get() == node; });
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
    HostWindow::Shape shape;
    shape.parent = parent;
    shape.rect = {rect.left, rect.top, rect.right, rect.bottom};
    shape.style = WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    shape.style |= parent && !m_traits.popup ? WS_CHILD : WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    if (m_traits.resizable && !(shape.style & WS_CHILD))
        shape.style |= WS_THICKFRAME;
    if (m_traits.perPixel && !(shape.style & WS_CHILD))
        shape.extendedStyle |= WS_EX_LAYERED;
    const std::wstring title(m_root.name());
    shape.title = title.c_str();
    m_windowHold = ComPtr<IAmbrel>(&m_face);
    if (!m_window.create(*this, &m_face, shape)) {
        m_windowHold.reset();
        return false;
    }
    m_dpi = m_window.dpi();
    m_surface.setScale(m_dpi * 100 / 96);
    RECT client{};
    GetClientRect(window(), &client);
    m_root.moveTo(morvane::fromWin32(client));
    return true;
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
        extended = m_traits.perPixel ? extended | WS_EX_LAYERED : extended & ~static_cast<DWORD>(WS_EX_LAYERED);
    }
    SetWindowLongPtrW(handle, GWL_STYLE, static_cast<LONG_PTR>(style));
    SetWindowLongPtrW(handle, GWL_EXSTYLE, static_cast<LONG_PTR>(extended));
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
    m_router.sceneChanged();
    recheckSceneSoon();
}

void WindowCore::nodeDetached(ObjectNode& node) noexcept
{
    const auto lies = [](const void* subtree, InputTarget target) {
        return static_cast<const ObjectNode*>(subtree)->holds(*nodeOf(target));
    };
    m_router.objectsGone(lies, &node);
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
    else if (GetCapture() == window())
        ReleaseCapture();
    m_changingCapture = false;
}

void WindowCore::acceptFiles(ObjectNode& node, bool accept)
{
    forget(m_fileReceivers, &node);
    if (accept)
        m_fileReceivers.emplace_back(&node);
    if (window())
        DragAcceptFiles(window(), !m_fileReceivers.empty());
}

void WindowCore::followMoves(HWND follower, bool follow)
{
    std::erase(m_followers, follower);
    if (follow)
        m_followers.push_back(follower);
}

void WindowCore::passOn(UINT message, bool pass)
{
    std::erase(m_passedOn, message);
    if (pass)
        m_passedOn.push_back(message);
}

bool WindowCore::dragsObjects()
{
    VARIANT_BOOL drags = VARIANT_FALSE;
    const ComPtr<IVexRes> resources = m_root.resources();
    return resources && SUCCEEDED(resources->GetDrag(&drags)) && drags != VARIANT_FALSE;
}

void WindowCore::dragged(const InputAction& action, SkinObjectCore& source)
{
    const WeakNode sourceNode(&source.node());
    const ComPtr<ISkinObjResBase> hold(source.face());
    const auto tell = [&](ObjectNode* node, VexMsgID id) {
        if (!node)
            return;
        const ComPtr<ISkinObjResBase> target = faceOf(node);
        VexNotify notice{};
        notice.eVexMsgId = id;
        notice.lParam1 = reinterpret_cast<hyper>(hold.get());
        notice.lParam2 = action.point.x;
        notice.lParam3 = action.point.y;
        coreOf(*node).notify(notice);
    };
    if (action.kind == InputKind::DragStart)
        return tell(&source.node(), VEXSM_STARTDRAG);
    m_dragOver.reset(nodeOf(m_scene.hitTest(action.point)));
    if (action.kind == InputKind::DragMove)
        return tell(m_dragOver.get(), VEXSM_DRAGING);
    if (action.kind == InputKind::DragEnd)
        tell(m_dragOver.get(), VEXSM_ENDDRAG);
    tell(sourceNode.get(), VEXSM_ENDDRAG_NOTIFYFROMOBJ);
    m_dragOver.reset();
}

} // namespace ambrel
