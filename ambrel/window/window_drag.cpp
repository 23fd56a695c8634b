// Drags of objects within the application, and files dropped on the window.
#include "ambrel/objects/hit_test.h"
#include "ambrel/window/window_core.h"

#include <algorithm>
#include <shellapi.h>

namespace ambrel {

namespace {

/// The record of the running drag that the application and the controls share; the references it comes with end with
/// this.
class DragRecord {
public:
    explicit DragRecord(IVexRes* resources) : m_resources(resources)
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

} // namespace

bool WindowCore::dragsObjects()
{
    VARIANT_BOOL drags = VARIANT_FALSE;
    const ComPtr<IVexRes> resources = m_root.resources();
    return resources && SUCCEEDED(resources->GetDrag(&drags)) && drags != VARIANT_FALSE;
}

void WindowCore::setDragRecord(ISkinObjResBase* source, ISkinObjResBase* target)
{
    DragRecord info(m_root.resources().get());
    info.record.pFromObj = source;
    info.record.pToObj = target;
    info.store();
    m_dragRecorded = true;
}

void WindowCore::clearDragRecord() noexcept
{
    // The next drag must find neither objects nor data of this one; how drags are shown is the application's setting.
    m_dragRecorded = false;
    DragRecord info(m_root.resources().get());
    VEX_DRAGINFO empty{};
    empty.hBitmap = info.record.hBitmap;
    empty.hWnd = info.record.hWnd;
    empty.bNeedNewHWND = info.record.bNeedNewHWND;
    empty.eDragMode = info.record.eDragMode;
    info.record = empty;
    info.store();
}

void WindowCore::dragged(const InputAction& action, SkinObjectCore& source)
{
    const WeakNode sourceNode(&source.node());
    const ComPtr<ISkinObjResBase> hold(source.face());
    if (action.kind == InputKind::DragStart) {
        setDragRecord(hold.get(), nullptr);
        return tellOfDrag(sourceNode.get(), VEXSM_STARTDRAG, hold.get(), action.point);
    }
    const bool cancelled = action.kind == InputKind::DragCancel;
    const bool ends = cancelled || action.kind == InputKind::DragEnd;
    POINT inWindow{};
    const HWND foreign = cancelled ? nullptr : acceptingWindowUnder(action.point, inWindow);
    m_dragOver.reset(cancelled || foreign ? nullptr : nodeOf(m_scene.hitTest(action.point)));
    setDragRecord(hold.get(), faceOf(m_dragOver.get()).get());
    const VexMsgID id = ends ? VEXSM_ENDDRAG : VEXSM_DRAGING;
    if (foreign)
        SendMessageW(foreign, id, reinterpret_cast<WPARAM>(hold.get()), MAKELPARAM(inWindow.x, inWindow.y));
    tellOfDrag(m_dragOver.get(), id, hold.get(), action.point);
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
