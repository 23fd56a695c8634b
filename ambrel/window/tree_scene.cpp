#include "ambrel/window/tree_scene.h"

#include "ambrel/objects/focus_order.h"
#include "ambrel/objects/hit_test.h"
#include "ambrel/properties/hotkey.h"
#include "ambrel/window/tree_walk.h"

#include <algorithm>
#include <limits>

namespace ambrel {

namespace {

short toShort(int value) noexcept
{
    return static_cast<short>(
        std::clamp<int>(value, std::numeric_limits<short>::min(), std::numeric_limits<short>::max()));
}

/// Given by the application, or by the object's own properties.
bool hasHotKey(SkinObjectCore& core, IVexControlBase& control, const KeyFact& key)
{
    ComPtr<IVexHotkey> first;
    ComPtr<IVexHotkey> second;
    control.GetHotkeyPtr(first.put(), second.put());
    return isHotKey(first.get(), key) || isHotKey(second.get(), key) || hasHotKeyProperty(core, key);
}

bool isPressedBy(SkinObjectCore& core, IVexControlBase& control, PlainKey key)
{
    VARIANT_BOOL backspace = VARIANT_FALSE;
    VARIANT_BOOL enter = VARIANT_FALSE;
    control.GetBackEnterHotkey(&backspace, &enter);
    return (key == PlainKey::Enter ? enter : backspace) != VARIANT_FALSE || isPressedByProperty(core, key);
}

/// As IVexHotkey has them.
hyper modifiersOf(const KeyFact& key) noexcept
{
    return (key.shift ? kHotkeyShift : 0) | (key.control ? kHotkeyControl : 0) | (key.alt ? kHotkeyAlt : 0);
}

Point centreOf(const ObjectNode& node) noexcept
{
    const Rect& rect = node.rect();
    return {rect.left + rect.width() / 2, rect.top + rect.height() / 2};
}

void cancelPress(IVexControlBase& control)
{
    control.SetLButtonDowned(VARIANT_FALSE);
    control.DirectRedraw(nullptr);
}

} // namespace

InputTarget targetOf(ObjectNode* node) noexcept
{
    return reinterpret_cast<InputTarget>(node);
}
ObjectNode* nodeOf(InputTarget target) noexcept
{
    return reinterpret_cast<ObjectNode*>(target);
}

InputTarget TreeScene::hitTest(Point point)
{
    ObjectNode* const met = ambrel::hitTest(m_root, point, HitPurpose::Mouse);
    return met == &m_root ? 0 : targetOf(met);
}

bool TreeScene::covers(InputTarget target, Point point)
{
    return nodeOf(target)->shownRect().contains(point);
}

bool TreeScene::isEnabled(InputTarget target)
{
    const ObjectNode& node = *nodeOf(target);
    return node.isShown() && node.isUsable();
}

bool TreeScene::takesFocus(InputTarget target)
{
    ObjectNode& node = *nodeOf(target);
    if (!isEnabled(target) || !node.has(NodeFlag::TabStop))
        return false;
    const WeakNode alive(&node);
    const ComPtr<ISkinObjResBase> hold(coreOf(node).face());
    VARIANT_BOOL takes = VARIANT_TRUE;
    VexNotify notice{};
    notice.eVexMsgId = VEXSM_SETFOCUS;
    notice.lParam1 = reinterpret_cast<hyper>(&takes);
    const bool answered = coreOf(node).notify(notice);
    return alive && (takes != VARIANT_FALSE || answered);
}

bool TreeScene::isDraggable(InputTarget)
{
    return m_window.dragsObjects();
}

InputTarget TreeScene::nextInTabOrder(InputTarget from, bool forward)
{
    return targetOf(nextTabStop(m_root, nodeOf(from), forward, this));
}

InputTarget TreeScene::nextInGroup(InputTarget from, bool forward)
{
    return targetOf(ambrel::nextInGroup(m_root, *nodeOf(from), forward, *this));
}

bool TreeScene::isChosen(const ObjectNode& node) const
{
    return std::any_of(m_chosen.begin(), m_chosen.end(), [&](const WeakNode& each) { return each.get() == &node; });
}

void TreeScene::chosen(const void* control)
{
    ObjectNode* found = nullptr;
    walkBeneath(m_root, [&](ObjectNode& node) {
        if (coreOf(node).control() == control)
            found = &node;
        return found != nullptr;
    });
    const std::optional<FocusGroup> group = found ? groupOf(*found) : std::nullopt;
    if (!group)
        return;
    std::erase_if(m_chosen, [&](const WeakNode& each) { return !each || groupOf(*each.get()) == group; });
    m_chosen.emplace_back(found);
}

template <class Predicate>
InputTarget TreeScene::firstUsable(Predicate isIt)
{
    ObjectNode* first = nullptr;
    walkBeneath(m_root, [&](ObjectNode& node) {
        if (!node.isShown() || !node.isUsable())
            return false;
        const ComPtr<IVexControlBase> control(coreOf(node).control());
        if (control && isIt(coreOf(node), *control.get()))
            first = &node;
        return first != nullptr;
    });
    return targetOf(first);
}

bool TreeScene::findsHotKeys(ObjectNode& node)
{
    const WeakNode alive(&node);
    const ComPtr<IVexControlBase> control(coreOf(node).control());
    ComPtr<IVexHotkey> first;
    ComPtr<IVexHotkey> second;
    if (control)
        control->GetHotkeyPtr(first.put(), second.put());
    const bool hasSome = alive && (first || second || hasAnyHotKeyProperty(coreOf(node)));
    if (alive)
        node.set(NodeFlag::NoHotKeys, !hasSome);
    return hasSome;
}

InputTarget TreeScene::hotKeyOwner(const KeyFact& key)
{
    if (!m_window.usesHotKeys())
        return 0;
    const std::uint64_t revision = hotkeyRevision();
    const bool marksHold = m_marksAreOf == revision;
    WeakNode owner;
    walkBeneath(m_root, [&](ObjectNode& node) {
        if (marksHold && node.has(NodeFlag::NoHotKeys))
            return false;
        // Marks that hold no more are all made anew, so the walk goes to the end then.
        if (!findsHotKeys(node) || owner || !node.isShown() || !node.isUsable())
            return false;
        const ComPtr<IVexControlBase> control(coreOf(node).control());
        const WeakNode asked(&node);
        if (control && hasHotKey(coreOf(node), *control.get(), key))
            owner = asked;
        return marksHold && owner;
    });
    m_marksAreOf = revision;
    return targetOf(owner.get());
}

InputTarget TreeScene::plainKeyOwner(PlainKey key)
{
    return firstUsable([&](SkinObjectCore& core, IVexControlBase& control) { return isPressedBy(core, control, key); });
}

std::vector<InputTarget> TreeScene::accessKeyOwners(wchar_t character, InputTarget from)
{
    std::vector<InputTarget> owners;
    std::ptrdiff_t before = 0; // how many of them
    const wchar_t wanted = upperCase(character);
    walkBeneath(m_root, [&](ObjectNode& node) {
        if (node.isShown() && node.isUsable() && coreOf(node).control() && shownAccessKey(coreOf(node)) == wanted)
            owners.push_back(targetOf(&node));
        if (targetOf(&node) == from)
            before = static_cast<std::ptrdiff_t>(owners.size());
        return false;
    });
    std::rotate(owners.begin(), owners.begin() + before, owners.end());
    return owners;
}

bool TreeScene::takesKeys(InputTarget target)
{
    const ObjectNode& node = *nodeOf(target);
    return m_registry.isRegistered(WM_KEYDOWN, node) || m_registry.isRegistered(WM_CHAR, node);
}

bool TreeScene::isPressedByEnter(InputTarget target)
{
    return offersEnter(coreOf(*nodeOf(target)));
}

void TreeScene::pressByHotKey(SkinObjectCore& core, const WeakNode& node, const KeyFact& key)
{
    VexNotify notice{};
    notice.eVexMsgId = VEXSM_AMBRELHOTKEY;
    notice.lParam1 = key.key;
    notice.lParam2 = modifiersOf(key);
    if (core.notify(notice) || !node || !node->isUsable())
        return;
    const ComPtr<IVexControlBase> control(core.control());
    if (control)
        press(*control.get(), node);
}

void TreeScene::press(IVexControlBase& control, const WeakNode& node)
{
    const Point centre = centreOf(*node.get());
    long result = 0;
    control.OnLButtonDown(MK_LBUTTON, toShort(centre.x), toShort(centre.y), &result);
    if (node && node->isUsable())
        control.OnLButtonUp(0, toShort(centre.x), toShort(centre.y), &result);
}

void TreeScene::deliver(const InputAction& action)
{
    const WeakNode node(nodeOf(action.target));
    SkinObjectCore& core = coreOf(*node.get());
    const ComPtr<ISkinObjResBase> hold(core.face());
    const ComPtr<IVexControlBase> control(core.control());
    if (!control)
        return;
    const Point at = action.byKeyboard ? centreOf(*node.get()) : action.point;
    const unsigned held = action.kind == InputKind::LeftUp ? 0 : MK_LBUTTON;
    const short flags = static_cast<short>(action.byKeyboard ? held : action.flags);
    const short x = toShort(at.x);
    const short y = toShort(at.y);
    long result = 0;
    switch (action.kind) {
    case InputKind::Enter:
        // A press shows only while the pointer is where a release would count.
        if (action.isPressed)
            control->SetLButtonDowned(VARIANT_TRUE);
        control->OnMouseEnter(flags, x, y, &result);
        break;
    case InputKind::Move:
        control->OnMouseMove(flags, x, y, &result);
        break;
    case InputKind::Leave:
        control->SetLButtonDowned(VARIANT_FALSE);
        control->OnMouseLeave(&result);
        break;
    case InputKind::LeftDown:
        control->OnLButtonDown(flags, x, y, &result);
        break;
    case InputKind::LeftUp:
        control->OnLButtonUp(flags, x, y, &result);
        break;
    case InputKind::LeftDoubleClick:
        control->OnLButtonDbClick(flags, x, y, &result);
        break;
    case InputKind::PressCancelled:
        cancelPress(*control.get());
        break;
    case InputKind::FocusGained:
        core.focusGained(at);
        break;
    case InputKind::FocusLost:
        core.focusLost();
        break;
    case InputKind::Activate:
        press(*control.get(), node);
        break;
    case InputKind::HotKey:
        pressByHotKey(core, node, action.key);
        break;
    case InputKind::DragStart:
    case InputKind::DragMove:
    case InputKind::DragEnd:
    case InputKind::DragCancel:
        m_window.dragged(action, core);
        break;
    // Objects hear of these only when they registered the window message.
    case InputKind::RightDown:
    case InputKind::RightUp:
    case InputKind::Wheel:
        break;
    }
}

} // namespace ambrel
