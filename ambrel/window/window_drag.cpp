// Drags of objects within the application, and files dropped on the window.
#include "ambrel/objects/hit_test.h"
#include "ambrel/window/root_window.h"
#include "ambrel/window/window_core.h"

#include <algorithm>
#include <shellapi.h>
#include <utility>

namespace ambrel {

namespace {

/// The record of the running drag that the application and the controls share; the references it comes with end with
/// this.
class DragRecord {
public:
    explicit DragRecord(const ComPtr<IVexRes>& resources) : m_resources(resources)
    {
        if (!m_resources || FAILED(m_resources->GetDragInfo(&record)))
            record = {};
        *m_from.put() = record.pFromObj;
        *m_to.put() = record.pToObj;
    }
    void store()
    {
        if (m_resources)
            m_resources->SetDragInfo(record);
    }
    void storeObjects(ISkinObjResBase* from, ISkinObjResBase* to)
    {
        record.pFromObj = from;
        record.pToObj = to;
        store();
    }
    /// Everything but how drags are shown, which is the application's setting.
    void takeContent(const VEX_DRAGINFO& other)
    {
        const VEX_DRAGINFO mine = std::exchange(record, other);
        record.hBitmap = mine.hBitmap;
        record.hWnd = mine.hWnd;
        record.bNeedNewHWND = mine.bNeedNewHWND;
        record.eDragMode = mine.eDragMode;
    }
    void empty()
    {
        takeContent({});
        store();
    }

    VEX_DRAGINFO record{};

private:
    ComPtr<IVexRes> m_resources;
    ComPtr<ISkinObjResBase> m_from;
    ComPtr<ISkinObjResBase> m_to;
};

void tellOfDrag(ObjectNode* node, VexMsgID id, ISkinObjResBase* source, Point at)
{
    if (!node)
        return;
    const ComPtr<ISkinObjResBase> hold = faceOf(node);
    VexNotify notice{};
    notice.eVexMsgId = id;
    notice.lParam1 = reinterpret_cast<hyper>(source);
    notice.lParam2 = at.x;
    notice.lParam3 = at.y;
    coreOf(*node).notify(notice);
}

bool isOpenAt(HWND window, POINT at)
{
    RECT place{};
    return IsWindowVisible(window) && IsWindowEnabled(window) && !IsIconic(window) && GetWindowRect(window, &place) &&
           PtInRect(&place, at);
}

/// The window at a point of the screen; looks through `picture`, the one that follows the pointer to show what is
/// dragged.
HWND windowAt(POINT at, HWND picture)
{
    const HWND met = WindowFromPoint(at);
    if (!picture || !met || GetAncestor(met, GA_ROOT) != picture)
        return met;
    HWND beneath = GetWindow(picture, GW_HWNDNEXT);
    while (beneath && !isOpenAt(beneath, at))
        beneath = GetWindow(beneath, GW_HWNDNEXT);
    if (!beneath)
        return nullptr;
    POINT inside = at;
    ScreenToClient(beneath, &inside);
    const HWND child = ChildWindowFromPointEx(beneath, inside, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
    return child ? child : beneath;
}

} // namespace

bool WindowCore::dragsObjects()
{
    VARIANT_BOOL drags = VARIANT_FALSE;
    const ComPtr<IVexRes> resources = m_root.resources();
    return resources && SUCCEEDED(resources->GetDrag(&drags)) && drags != VARIANT_FALSE;
}

WindowCore::DragTarget WindowCore::dragTargetAt(Point point)
{
    WindowCore* over = this; // a window that is not shown can be dragged in, too
    DragTarget target{nullptr, point, nullptr};
    POINT at{point.x, point.y};
    if (window() && ClientToScreen(window(), &at)) {
        RootWindow* const met =
            RootWindow::of(windowAt(at, reinterpret_cast<HWND>(DragRecord(m_root.resources()).record.hWnd)));
        if (met && &met->window() != this && !met->window().m_destroying) {
            over = &met->window();
            ScreenToClient(over->window(), &at);
            target.inWindow = {static_cast<int>(at.x), static_cast<int>(at.y)};
        }
    }
    const ComPtr<IAmbrel> hold(&over->m_face);
    const InputTarget met = over->m_scene.hitTest(target.inWindow);
    target.node = met && over->m_scene.isEnabled(met) ? nodeOf(met) : nullptr;
    target.resources = over->m_root.resources();
    return target;
}

void WindowCore::setDragRecord(ISkinObjResBase* source, const DragTarget& target)
{
    const ComPtr<ISkinObjResBase> face = faceOf(target.node);
    DragRecord own(m_root.resources());
    own.storeObjects(source, face.get());
    m_dragRecorded = true;
    if (m_dragResources && m_dragResources.get() != target.resources.get())
        takeBackDragRecord();
    if (!target.node || target.resources.get() == m_root.resources().get())
        return;
    // Its controls read the record of their own resource object.
    m_dragResources = target.resources;
    DragRecord lent(m_dragResources);
    lent.takeContent(own.record);
    lent.store();
}

void WindowCore::fetchDragRecord()
{
    if (!m_dragResources)
        return;
    const DragRecord lent(m_dragResources);
    DragRecord own(m_root.resources());
    own.takeContent(lent.record);
    own.store();
}

void WindowCore::takeBackDragRecord() noexcept
{
    if (const ComPtr<IVexRes> lent = std::move(m_dragResources))
        DragRecord(lent).empty();
}

void WindowCore::clearDragRecord() noexcept
{
    // The next drag must find neither objects nor data of this one.
    m_dragRecorded = false;
    takeBackDragRecord();
    DragRecord(m_root.resources()).empty();
}

void WindowCore::dragged(const InputAction& action, SkinObjectCore& source)
{
    const WeakNode sourceNode(&source.node());
    const ComPtr<ISkinObjResBase> hold(source.face());
    if (action.kind == InputKind::DragStart) {
        setDragRecord(hold.get(), {});
        return tellOfDrag(sourceNode.get(), VEXSM_STARTDRAG, hold.get(), action.point);
    }
    const bool cancelled = action.kind == InputKind::DragCancel;
    const bool ends = cancelled || action.kind == InputKind::DragEnd;
    POINT inWindow{};
    const HWND foreign = cancelled ? nullptr : acceptingWindowUnder(action.point, inWindow);
    const DragTarget target = cancelled || foreign ? DragTarget{} : dragTargetAt(action.point);
    m_dragOver.reset(target.node);
    setDragRecord(hold.get(), target);
    const VexMsgID id = ends ? VEXSM_ENDDRAG : VEXSM_DRAGING;
    if (foreign)
        SendMessageW(foreign, id, reinterpret_cast<WPARAM>(hold.get()), MAKELPARAM(inWindow.x, inWindow.y));
    tellOfDrag(m_dragOver.get(), id, hold.get(), target.inWindow);
    fetchDragRecord();
    if (!ends)
        return;
    tellOfDrag(sourceNode.get(), VEXSM_ENDDRAG_NOTIFYFROMOBJ, hold.get(), action.point);
    m_dragOver.reset();
    clearDragRecord();
}

bool WindowCore::acceptDrags(HWND receiver)
{
    if (!IsWindow(receiver) ||
        std::find(m_dragReceivers.begin(), m_dragReceivers.end(), receiver) != m_dragReceivers.end())
        return false;
    m_dragReceivers.push_back(receiver);
    return true;
}

bool WindowCore::refuseDrags(HWND receiver) noexcept
{
    return std::erase(m_dragReceivers, receiver) != 0;
}

HWND WindowCore::acceptingWindowUnder(Point point, POINT& inWindow)
{
    std::erase_if(m_dragReceivers, [](HWND each) { return !IsWindow(each); });
    if (m_dragReceivers.empty() || !window())
        return nullptr;
    inWindow = {point.x, point.y};
    ClientToScreen(window(), &inWindow);
    HWND under = WindowFromPoint(inWindow);
    while (under && std::find(m_dragReceivers.begin(), m_dragReceivers.end(), under) == m_dragReceivers.end())
        under = GetAncestor(under, GA_PARENT);
    if (under)
        ScreenToClient(under, &inWindow);
    return under;
}

void WindowCore::acceptFiles(ObjectNode& node, bool accept)
{
    std::erase_if(m_fileReceivers, [&](const WeakNode& each) { return !each || each.get() == &node; });
    if (accept)
        m_fileReceivers.emplace_back(&node);
    if (window())
        DragAcceptFiles(window(), !m_fileReceivers.empty());
}

ObjectNode* WindowCore::fileReceiverAt(Point point)
{
    const auto accepts = [&](const ObjectNode* node) {
        return std::any_of(m_fileReceivers.begin(), m_fileReceivers.end(),
                           [&](const WeakNode& each) { return each.get() == node; });
    };
    // What lies on top at the point, or the nearest around it that asked for files.
    ObjectNode* node = hitTest(m_root.node(), point, HitPurpose::Anything);
    while (node && !(accepts(node) && node->isUsable()))
        node = node->parent();
    return node;
}

bool WindowCore::onDropFiles(WPARAM drop, LPARAM, LRESULT& result)
{
    const auto files = reinterpret_cast<HDROP>(drop);
    POINT at{};
    DragQueryPoint(files, &at);
    if (ObjectNode* const receiver = fileReceiverAt({static_cast<int>(at.x), static_cast<int>(at.y)}))
        forward(*receiver, WM_DROPFILES, drop, 0, result, false);
    DragFinish(files);
    return true;
}

} // namespace ambrel
