#include "ambrel/objects/skin_object_core.h"

#include "ambrel/objects/drawing.h"
#include "ambrel/objects/name_index.h"
#include "ambrel/trace/trace.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ambrel {

using morvane::saturatingAdd;
using morvane::saturatingSubtract;

namespace {

/// Whether nobody but the given reference keeps an object. Counts are plain and exact in this process.
bool isLastReference(ISkinObjResBase& object) noexcept
{
    object.AddRef();
    return object.Release() == 1;
}

} // namespace

SkinObjectCore* coreOf(IUnknown* object) noexcept
{
    if (!object)
        return nullptr;
    ComPtr<CoreAccess> access;
    if (SUCCEEDED(object->QueryInterface(kIidCoreAccess, access.putVoid())) && access)
        return &access->core();
    // A real control: its base object answers through the operation that hands out its interfaces.
    ComPtr<IVexControlBase> control;
    if (FAILED(object->QueryInterface(morvane::iidOf<IVexControlBase>(), control.putVoid())) || !control)
        return nullptr;
    ComPtr<IDispatch> given;
    if (FAILED(control->GetInerface(reinterpret_cast<hyper>(&kIidCoreAccess), given.put())) || !given)
        return nullptr;
    if (FAILED(given->QueryInterface(kIidCoreAccess, access.putVoid())) || !access)
        return nullptr;
    return &access->core();
}

ComPtr<ISkinObjResBase> faceOf(ObjectNode* node) noexcept
{
    return ComPtr<ISkinObjResBase>(node ? coreOf(*node).face() : nullptr);
}

// --- tree

bool SkinObjectCore::addChild(SkinObjectCore& child, std::size_t index)
{
    ObjectNode& node = child.m_node;
    if (node.holds(m_node) || m_node.has(NodeFlag::Destroyed) || node.has(NodeFlag::Destroyed) ||
        node.owner().rootServices())
        return false;
    if (node.parent() == &m_node)
        return moveChild(child, index);
    ComPtr<ISkinObjResBase> reference(child.face());
    if (!reference)
        return false;
    const ComPtr<ISkinObjResBase> hold = reference;
    RootServices* const former = child.services();
    child.invalidate();
    m_node.insert(node, index);
    child.m_treeReference = std::move(reference);
    RootServices* const present = services();
    if (former && former != present)
        former->nodeDetached(node);
    if (present && node.has(NodeFlag::Created) && !node.has(NodeFlag::FinallyCreated))
        present->finalCreatePending(node);
    if (m_node.has(NodeFlag::Mirrored) && !node.has(NodeFlag::Mirrored))
        child.setMirrored(true);
    child.layOutNow(false);
    child.invalidate();
    if (present && former != present)
        child.tellWindowEntered(former != nullptr);
    return true;
}

void SkinObjectCore::tellWindowEntered(bool fromAnother)
{
    const ComPtr<ISkinObjResBase> hold(face());
    m_node.set(NodeFlag::NoHotKeys, false); // another window found that, at another time
    windowEntered(fromAnother);
    ChildIteration children(m_node);
    while (ObjectNode* child = children.next())
        coreOf(*child).tellWindowEntered(fromAnother);
}

bool SkinObjectCore::detach()
{
    if (!m_node.parent())
        return false;
    RootServices* const window = services();
    invalidate();
    m_node.remove();
    if (window)
        window->nodeDetached(m_node);
    // The parent's reference; this object may end with it.
    const ComPtr<ISkinObjResBase> reference = std::move(m_treeReference);
    if (reference && isLastReference(*reference.get()))
        tellDestroyed();
    return true;
}

void SkinObjectCore::tellDestroyed()
{
    if (!m_node.set(NodeFlag::Destroyed, true))
        return;
    const ComPtr<ISkinObjResBase> hold(face());
    VexNotify notice{};
    notice.eVexMsgId = VEXSM_DESTROYING;
    notify(notice);
    ChildIteration children(m_node);
    while (ObjectNode* child = children.next())
        coreOf(*child).tellDestroyed();
}

void SkinObjectCore::destroy()
{
    const ComPtr<ISkinObjResBase> hold(face());
    tellDestroyed();
    detach();
}

void SkinObjectCore::removeChildren(bool destroying)
{
    const ComPtr<ISkinObjResBase> hold(face());
    if (destroying) {
        ChildIteration children(m_node);
        while (ObjectNode* child = children.next())
            coreOf(*child).tellDestroyed();
    }
    // From the top, where leaving costs nothing.
    ChildIteration children(m_node, ChildIteration::Order::TopToBottom);
    while (ObjectNode* child = children.next())
        coreOf(*child).detach();
}

void SkinObjectCore::releaseTree() noexcept
{
    m_node.set(NodeFlag::Destroyed, true); // nothing can be added any more
    morvane::guarded([&] { removeChildren(true); });
    m_node.remove();
}

bool SkinObjectCore::moveChild(SkinObjectCore& child, std::size_t index)
{
    if (!m_node.moveChild(child.m_node, index))
        return false;
    child.invalidate();
    return true;
}

SkinObjectCore* SkinObjectCore::findByName(std::wstring_view name, long type, bool deep) noexcept
{
    ObjectNode* const found = ambrel::findByName(m_node, {name, type, deep});
    return found ? &coreOf(*found) : nullptr;
}

HRESULT SkinObjectCore::setParent(ISkinObjResBase* parent)
{
    if (!parent)
        return detach() ? S_OK : S_FALSE;
    SkinObjectCore* core = coreOf(parent);
    if (!core)
        return E_INVALIDARG;
    if (m_node.parent() == &core->m_node)
        return S_FALSE;
    return core->addChild(*this, core->m_node.childCount()) ? S_OK : E_INVALIDARG;
}

short SkinObjectCore::childCountForCaller() const noexcept
{
    return static_cast<short>(std::min<std::size_t>(m_node.childCount(), std::numeric_limits<short>::max()));
}

short SkinObjectCore::indexForCaller(const ObjectNode& child) const noexcept
{
    return static_cast<short>(std::min<int>(m_node.indexOf(child), std::numeric_limits<short>::max()));
}

ComPtr<ISkinObjResBase> SkinObjectCore::childByCaption(std::wstring_view caption, short* index) noexcept
{
    ObjectNode* const found = ambrel::findByName(m_node, {caption, VEXOBJTYPE_PLUGIN, false});
    if (found && index)
        *index = indexForCaller(*found);
    return faceOf(found);
}

ComPtr<ISkinObjResBase> SkinObjectCore::childHolding(ISkinObjResBase* object, short* index) noexcept
{
    SkinObjectCore* core = coreOf(object);
    for (std::size_t i = 0; core && i < m_node.childCount(); ++i) {
        if (m_node.childAt(i)->holds(core->m_node)) {
            if (index)
                *index = indexForCaller(*m_node.childAt(i));
            return faceOf(m_node.childAt(i));
        }
    }
    return nullptr;
}

// --- geometry

Rect SkinObjectCore::availableRect() const noexcept
{
    const Rect& rect = m_node.rect();
    if (!m_extras)
        return rect;
    const Rect& gaps = m_extras->childGaps;
    return {saturatingAdd(rect.left, gaps.left), saturatingAdd(rect.top, gaps.top),
            saturatingSubtract(rect.right, gaps.right), saturatingSubtract(rect.bottom, gaps.bottom)};
}

HRESULT SkinObjectCore::setAvailableRect(IVexRect* given)
{
    Rect gaps;
    if (given) {
        SkinRect record{};
        const HRESULT status = given->GetRectStruct(&record);
        if (FAILED(status))
            return status;
        const Rect& rect = m_node.rect();
        const Rect area = withinReach(morvane::toRect(record));
        gaps = {saturatingSubtract(area.left, rect.left), saturatingSubtract(area.top, rect.top),
                saturatingSubtract(rect.right, area.right), saturatingSubtract(rect.bottom, area.bottom)};
    }
    extras().childGaps = gaps;
    layOutChildren();
    return S_OK;
}

void SkinObjectCore::scaleChildGaps(int from, int to) noexcept
{
    if (!m_extras)
        return;
    Rect& gaps = m_extras->childGaps;
    for (int* gap : {&gaps.left, &gaps.top, &gaps.right, &gaps.bottom})
        *gap = MulDiv(*gap, to, from);
}

Rect SkinObjectCore::areaForLayout() const noexcept
{
    return m_node.parent() ? coreOf(*m_node.parent()).availableRect() : Rect{};
}

bool SkinObjectCore::isLaidOutMirrored() const noexcept
{
    return m_node.parent() && m_node.parent()->has(NodeFlag::Mirrored);
}

void SkinObjectCore::place(const Position& position)
{
    m_node.setPosition(position);
    layOutNow(false);
}

void SkinObjectCore::layOutNow(bool alwaysTell)
{
    const bool isWindow = rootServices() != nullptr; // its rectangle is the window's client area
    takeRect(isWindow ? m_node.rect() : layOut(m_node.position(), areaForLayout(), isLaidOutMirrored()), alwaysTell);
}

void SkinObjectCore::moveTo(const Rect& wanted)
{
    const Rect rect = withinReach(wanted);
    m_node.setPosition(positionFor(rect, areaForLayout(), m_node.position(), isLaidOutMirrored()));
    takeRect(rect, false);
}

void SkinObjectCore::takeRect(const Rect& rect, bool alwaysTell)
{
    const bool changed = rect != m_node.rect();
    if (!changed && !alwaysTell)
        return;
    const ComPtr<ISkinObjResBase> hold(face());
    if (changed) {
        invalidate();
        m_node.setRect(rect);
        invalidate();
        layOutChildren();
    }
    tellSize(changed);
}

void SkinObjectCore::layOutChildren()
{
    ChildIteration children(m_node);
    while (ObjectNode* child = children.next())
        coreOf(*child).layOutNow(false);
}

void SkinObjectCore::tellSize(bool changed)
{
    // An object that resizes itself while it is being told about its size is told once more afterwards, not from
    // within; one that never settles is left as it is.
    constexpr int kMostRounds = 4;
    if (m_node.has(NodeFlag::Sizing)) {
        if (changed)
            m_node.set(NodeFlag::SizedAgain, true);
        return;
    }
    m_node.set(NodeFlag::Sizing, true);
    for (int round = 0; round < kMostRounds; ++round) {
        m_node.set(NodeFlag::SizedAgain, false);
        sizeChanged();
        if (!m_node.has(NodeFlag::SizedAgain))
            break;
    }
    m_node.set(NodeFlag::Sizing, false);
}

void SkinObjectCore::setMirrored(bool mirrored)
{
    const auto mark = [mirrored](auto& self, ObjectNode& node) -> void {
        node.set(NodeFlag::Mirrored, mirrored);
        for (ObjectNode* child : node.children())
            self(self, *child);
    };
    mark(mark, m_node);
    layOutChildren();
    invalidate();
}

VexDockObjType SkinObjectCore::dockType() const noexcept
{
    return static_cast<VexDockObjType>(m_extras ? m_extras->dock : ambrel::Dock::LeftTop);
}

void SkinObjectCore::dock(ambrel::Dock dock, bool full)
{
    extras().dock = dock;
    place(dockedPosition(dock, m_node.rect().size(), full));
}

// --- state

void SkinObjectCore::setVisible(bool visible, bool redraws)
{
    if (m_node.has(NodeFlag::Visible) == visible)
        return;
    const ComPtr<ISkinObjResBase> hold(face());
    if (!visible && redraws)
        invalidate();
    m_node.set(NodeFlag::Visible, visible);
    if (visible && redraws)
        invalidate();
    RootServices* const window = services();
    if (!visible && window)
        window->nodeWithdrawn(m_node);
}

void SkinObjectCore::setVisibleWithChildren(bool visible, bool redraws)
{
    const ComPtr<ISkinObjResBase> hold(face());
    ChildIteration children(m_node);
    while (ObjectNode* child = children.next())
        coreOf(*child).setVisibleWithChildren(visible, false);
    setVisible(visible, redraws);
}

bool SkinObjectCore::setEnabled(bool enabled, bool redraws)
{
    if (!m_node.set(NodeFlag::Enabled, enabled))
        return false;
    const ComPtr<ISkinObjResBase> hold(face());
    RootServices* const window = services();
    if (!enabled && window)
        window->nodeWithdrawn(m_node);
    enabledChanged(enabled, redraws);
    if (redraws)
        redraw();
    return true;
}

void SkinObjectCore::setOpacity(int opacity)
{
    m_node.setOpacity(static_cast<std::uint8_t>(std::clamp(opacity, 0, 255)));
    invalidate();
}

HRESULT SkinObjectCore::setControlState(VEX_CTRLSTATE state)
{
    if (state < VEX_CTRL_NORMAL || state > VEX_CTRL_INACTIVE)
        return E_INVALIDARG;
    const ComPtr<ISkinObjResBase> hold(face());
    if (state == VEX_CTRL_INACTIVE || m_extras)
        extras().isInactive = state == VEX_CTRL_INACTIVE;
    m_node.set(NodeFlag::LeftButtonDown, state == VEX_CTRL_PRESS);
    m_node.set(NodeFlag::MouseOver, state == VEX_CTRL_HOT || state == VEX_CTRL_PRESS);
    setEnabled(state != VEX_CTRL_DISABLE, false);
    RootServices* const window = services();
    if (state == VEX_CTRL_FOCUS && window)
        window->setFocus(&m_node);
    redraw();
    return S_OK;
}

VEX_CTRLSTATE SkinObjectCore::controlState() const noexcept
{
    if (!m_node.isUsable())
        return VEX_CTRL_DISABLE;
    if (m_node.has(NodeFlag::LeftButtonDown))
        return VEX_CTRL_PRESS;
    if (m_node.has(NodeFlag::MouseOver))
        return VEX_CTRL_HOT;
    if (m_node.has(NodeFlag::Focused))
        return VEX_CTRL_FOCUS;
    return m_extras && m_extras->isInactive ? VEX_CTRL_INACTIVE : VEX_CTRL_NORMAL;
}

// --- drawing

void SkinObjectCore::redraw(const Rect* part)
{
    const Rect asked = part ? *part : m_node.rect();
    traceRect(AMBREL_TRACE_REDRAW, face(), morvane::toSkinRect(asked));
    // Controls ask for another picture while they draw themselves, each time: the one being made shows it already, and
    // another one would ask again, for ever.
    if (!m_node.has(NodeFlag::BeingDrawn))
        invalidate(&asked);
}

Rect SkinObjectCore::shownWithMark() const
{
    const Rect shown = m_node.shownRect();
    if (shown.isEmpty() || !m_node.parent() || !m_node.has(NodeFlag::Focused))
        return shown;
    return focusMarkRect(m_node, currentScale()).intersection(m_node.parent()->shownRect());
}

void SkinObjectCore::invalidate(const Rect* part)
{
    RootServices* const window = services();
    if (!window || !m_node.redraws())
        return;
    const Rect shown = part ? m_node.shownRect().intersection(*part) : shownWithMark();
    if (!shown.isEmpty())
        window->invalidate(shown);
}

bool SkinObjectCore::redrawWindow(bool now)
{
    const ComPtr<ISkinObjResBase> hold(face());
    redraw();
    RootServices* const window = services();
    if (now && window)
        window->paintNow();
    return window != nullptr;
}

hyper SkinObjectCore::windowHandle() noexcept
{
    if (m_extras && m_extras->ownerWindow)
        return m_extras->ownerWindow;
    RootServices* const window = services();
    return window ? reinterpret_cast<hyper>(window->window()) : 0;
}

// --- names and belongings

SkinObjectCore::Extras& SkinObjectCore::extras()
{
    if (!m_extras)
        m_extras = std::make_unique<Extras>();
    return *m_extras;
}

std::wstring_view SkinObjectCore::name() const noexcept
{
    return m_name.view();
}

void SkinObjectCore::setName(std::wstring_view name)
{
    m_name = CompactText(name);
    m_node.nameChanged();
}

bool SkinObjectCore::answersTo(std::wstring_view wanted, long type) const noexcept
{
    return (type == VEXOBJTYPE_PLUGIN || type == m_type) && name() == wanted;
}

Bstr SkinObjectCore::objectId()
{
    std::wstring& id = extras().objectId;
    if (id.empty()) {
        GUID guid{};
        wchar_t text[40];
        CoCreateGuid(&guid);
        StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
        id = text;
    }
    return Bstr(id);
}

Bstr SkinObjectCore::typeName()
{
    return m_extras && !m_extras->typeName.empty() ? Bstr(m_extras->typeName) : defaultTypeName();
}

ComPtr<IVexRes> SkinObjectCore::resources()
{
    if (m_resources)
        return m_resources;
    RootServices* const window = rootServices() ? nullptr : services(); // a root has only its own
    return ComPtr<IVexRes>(window ? window->resources() : nullptr);
}

void SkinObjectCore::setConfiguration(hyper handle, ComPtr<IVexXMLNode> owner)
{
    Extras& more = extras();
    more.configuration = handle;
    more.configurationNode = std::move(owner);
}

hyper SkinObjectCore::configuration() const noexcept
{
    return m_extras ? m_extras->configuration : 0;
}

ComPtr<IVexXMLNode> SkinObjectCore::configurationNode() const noexcept
{
    return m_extras ? m_extras->configurationNode : nullptr;
}

void SkinObjectCore::callEvent(long id, hyper wParam, hyper lParam)
{
    const ComPtr<ISkinObjResBase> hold(face());
    trace(AMBREL_TRACE_EVENT, face(), id, wParam, lParam);
    if (RootServices* const window = services())
        window->objectEvent(m_node, id, wParam, lParam);
}

} // namespace ambrel
