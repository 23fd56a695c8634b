// The object tree as the input router sees it.
#pragma once

#include "ambrel/objects/skin_object_core.h"
#include "ambrel/window/input_router.h"
#include "ambrel/window/keyboard_properties.h"
#include "ambrel/window/message_registry.h"

#include <vector>

namespace ambrel {

/// What the scene needs of the window around the tree.
class SceneWindow {
public:
    virtual void setPointerCapture(bool captured) = 0;
    /// The object drag that an object of the tree started; the record of IVexRes::SetDrag decides whether there is one.
    virtual bool dragsObjects() = 0;
    virtual void dragged(const InputAction& action, SkinObjectCore& source) = 0;
    /// Hot keys work in this window.
    virtual bool usesHotKeys() const noexcept = 0;

protected:
    ~SceneWindow() = default;
};

/// Router targets are nodes; whoever unlinks a subtree tells the router before a node's address can be used again.
InputTarget targetOf(ObjectNode* node) noexcept;
ObjectNode* nodeOf(InputTarget target) noexcept;

/// Answers the router from the tree and tells controls what concerns them through their On... operations.
class TreeScene final : public InputScene, private FocusGroups {
public:
    TreeScene(ObjectNode& root, const MessageRegistry& registry, SceneWindow& window) noexcept
        : m_root(root), m_registry(registry), m_window(window)
    {
    }

    InputTarget hitTest(morvane::Point point) override;
    bool covers(InputTarget target, morvane::Point point) override;
    bool isEnabled(InputTarget target) override;
    bool takesFocus(InputTarget target) override;
    bool isDraggable(InputTarget target) override;
    InputTarget nextInTabOrder(InputTarget from, bool forward) override;
    InputTarget nextInGroup(InputTarget from, bool forward) override;
    InputTarget hotKeyOwner(const KeyFact& key) override;
    std::vector<InputTarget> accessKeyOwners(wchar_t character, InputTarget from) override;
    InputTarget enterOwner() override { return plainKeyOwner(PlainKey::Enter); }
    InputTarget backspaceOwner() override { return plainKeyOwner(PlainKey::Backspace); }
    bool keepsTab(InputTarget) override { return false; }
    bool takesKeys(InputTarget target) override;
    bool isPressedByEnter(InputTarget target) override;
    void deliver(const InputAction& action) override;
    void setPointerCapture(bool captured) override { m_window.setPointerCapture(captured); }

    /// A group told the window that this object is now the chosen one of it. Objects that are not in the tree are
    /// ignored.
    void chosen(const void* control);

private:
    // FocusGroups
    std::optional<FocusGroup> groupOf(ObjectNode& node) const override { return focusGroupOf(coreOf(node)); }
    bool isChosen(const ObjectNode& node) const override;

    /// The first shown and usable object, in tree order, that the predicate is true for.
    template <class Predicate>
    InputTarget firstUsable(Predicate isIt);
    InputTarget plainKeyOwner(PlainKey key);
    /// Marks an object that has no hot key; answers whether it has one.
    static bool findsHotKeys(ObjectNode& node);
    static void press(IVexControlBase& control, const WeakNode& node);
    static void pressByHotKey(SkinObjectCore& core, const WeakNode& node, const KeyFact& key);

    ObjectNode& m_root;
    const MessageRegistry& m_registry;
    SceneWindow& m_window;
    std::vector<WeakNode> m_chosen; // of each group
    // Objects without hot keys are marked so, for the next keys to pass them by. The marks hold until somebody anywhere
    // comes to a hot key.
    static constexpr std::uint64_t kNever = ~std::uint64_t{0};
    std::uint64_t m_marksAreOf = kNever; // the hotkeyRevision()
};

} // namespace ambrel
