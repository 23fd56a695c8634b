#include "ambrel/window/tree_scene.h"

#include "ambrel/objects/focus_order.h"
#include "ambrel/objects/hit_test.h"
#include "ambrel/window/tree_walk.h"

#include <algorithm>
#include <limits>

namespace ambrel {

namespace {

// Bits of IVexHotkey's modifiers; those of the platform's hot-key control.
constexpr long kHotkeyShift = 1;
constexpr long kHotkeyControl = 2;
constexpr long kHotkeyAlt = 4;

short toShort(int value) noexcept
{
    return static_cast<short>(
        std::clamp<int>(value, std::numeric_limits<short>::min(), std::numeric_limits<short>::max()));
}

bool isFunctionKey(int key) noexcept
{
    return key >= VK_F1 && key <= VK_F24;
}

bool matches(IVexHotkey* hotkey, const KeyFact& key) noexcept
{
    if (!hotkey)
        return false;
    long code = 0;
    long modifiers = 0;
    hotkey->get_wVirtualKeyCode(&code);
    hotkey->get_wModifiers(&modifiers);
    return code != 0 && code == key.key && ((modifiers & kHotkeyControl) != 0) == key.control &&
           ((modifiers & kHotkeyAlt) != 0) == key.alt && ((modifiers & kHotkeyShift) != 0) == key.shift;
}

bool hasHotKey(IVexControlBase& control, const KeyFact& key)
{
    ComPtr<IVexHotkey> first;
    ComPtr<IVexHotkey> second;
    control.GetHotkeyPtr(first.put(), second.put());
    return matches(first.get(), key) || matches(second.get(), key);
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
    return targetOf(nextTabStop(m_root, nodeOf(from), forward));
}

InputTarget TreeScene::hotKeyOwner(const KeyFact& key)
{
    if (!m_window.usesHotKeys() || !(key.control || key.alt || isFunctionKey(key.key)))
        return 0;
    ObjectNode* owner = nullptr;
    walkBeneath(m_root, [&](ObjectNode& node) {
        if (!node.isShown() || !node.isUsable())
            return false;
        const ComPtr<IVexControlBase> control(coreOf(node).control());
        if (control && hasHotKey(*control.get(), key))
            owner = &node;
        return owner != nullptr;
    });
    return targetOf(owner);
}

InputTarget TreeScene::enterOwner()
{
    return plainKeyOwner(PlainKey::Enter);
}
InputTarget TreeScene::backspaceOwner()
{
    return plainKeyOwner(PlainKey::Backspace);
}

InputTarget TreeScene::plainKeyOwner(PlainKey key)
{
    ObjectNode* owner = nullptr;
    walkBeneath(m_root, [&](ObjectNode& node) {
        if (!node.isShown() || !node.isUsable())
            return false;
        const ComPtr<IVexControlBase> control(coreOf(node).control());
        if (!control)
            return false;
        VARIANT_BOOL backspace = VARIANT_FALSE;
        VARIANT_BOOL enter = VARIANT_FALSE;
        control->GetBackEnterHotkey(&backspace, &enter);
        if ((key == PlainKey::Enter ? enter : backspace) != VARIANT_FALSE)
            owner = &node;
        return owner != nullptr;
    });
    return targetOf(owner);
}

bool TreeScene::isPressedByKeyboard(InputTarget target)
{
    // An object that asked for the keys themselves acts on them in its own way.
    const ObjectNode& node = *nodeOf(target);
    return node.has(NodeFlag::TabStop) && !m_registry.isRegistered(WM_KEYDOWN, node) &&
           !m_registry.isRegistered(WM_CHAR, node);
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
