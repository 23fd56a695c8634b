// The object tree of one window: plain nodes with geometry and flags. Knows no COM; what a node belongs to is its
// owner.
#pragma once

#include "ambrel/objects/position_layout.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace ambrel {

class NameIndex;
class ObjectNode;
class RootServices;

/// What a node belongs to. The tree borrows it; it lives exactly as long as its node.
class NodeOwner {
public:
    /// Non-null only for the owner of a window's root node.
    virtual RootServices* rootServices() noexcept { return nullptr; }
    /// The same for the index of names that the tree keeps up to date.
    virtual NameIndex* nameIndex() noexcept { return nullptr; }

    /// Its name as searches see it; ObjectNode::nameChanged() says when it is another one.
    virtual std::wstring_view name() const noexcept { return {}; }
    /// Whether it is what a search for a name and a type (90000: any) looks for.
    virtual bool answersTo(std::wstring_view name, long /*type*/) const noexcept { return name == this->name(); }

    /// Whether the object takes mouse moves over it itself; one that does not lets them through to what lies beneath.
    /// May run foreign code that changes the tree.
    virtual bool takesMouse() { return true; }

protected:
    ~NodeOwner() = default;
};

enum class NodeFlag : std::uint32_t {
    Visible = 1u << 0, // its own wish; shown only when its ancestors are visible too
    Enabled = 1u << 1, // its own wish; works only when its ancestors are enabled too
    MouseOver = 1u << 2,
    LeftButtonDown = 1u << 3,
    Focused = 1u << 4,
    TabStop = 1u << 5,    // takes part in the tab order
    DrawsFocus = 1u << 6, // shows the focus mark when it has the keyboard focus
    TakesMouse = 1u << 7, // cleared: mouse input falls through to what lies beneath
    Mirrored = 1u << 8,   // laid out from right to left
    BlendsWithParent = 1u << 9,
    Redraws = 1u << 10,    // cleared: requests to redraw are ignored
    Composed = 1u << 11,   // part of a composite control
    MarkedRoot = 1u << 12, // SetRootObject
    Modified = 1u << 13,
    Dragable = 1u << 14,
    Created = 1u << 15,        // its properties have been made
    FinallyCreated = 1u << 16, // told that its creation is finished
    Destroyed = 1u << 17,      // told that it is being destroyed; never told again
    Sizing = 1u << 18,         // is being told about a new size
    SizedAgain = 1u << 19,     // got another size meanwhile
    Initialised = 1u << 20,    // told about its window for the first time
    AwaitsFinish = 1u << 21,   // its window will finish its creation when it is shown
    BeingDrawn = 1u << 22,     // all that is shown of it is being drawn right now
    Hooks = 1u << 23,          // was registered for hooks at least once
    AsksForMark = 1u << 24,    // when it was drawn last, it asked for the focus mark
    NoHotKeys = 1u << 25,      // was found without one; holds as long as its window says (TreeScene)
};

/// One object of the tree. Children lie in z-order: the first is drawn first and lies lowest.
class ObjectNode {
public:
    explicit ObjectNode(NodeOwner& owner) noexcept : m_owner(owner) {}
    ObjectNode(const ObjectNode&) = delete;
    ObjectNode& operator=(const ObjectNode&) = delete;
    /// Leaves its parent; its children become roots of their own. Iterations over it end.
    ~ObjectNode();

    NodeOwner& owner() const noexcept { return m_owner; }

    // The tree.
    ObjectNode* parent() const noexcept { return m_parent; }
    ObjectNode& root() noexcept;
    std::span<ObjectNode* const> children() const noexcept { return m_children; }
    std::size_t childCount() const noexcept { return m_children.size(); }
    ObjectNode* childAt(std::size_t index) const noexcept
    {
        return index < m_children.size() ? m_children[index] : nullptr;
    }
    /// -1 when `child` is not a direct child.
    int indexOf(const ObjectNode& child) const noexcept;
    /// True for the node itself and everything beneath it.
    bool holds(const ObjectNode& other) const noexcept;

    /// Puts `child` at `index` (clamped), taking it from its former parent. Refuses (false, nothing changed) what would
    /// make a cycle. Within the same parent, `index` counts without the child. Throws std::bad_alloc with nothing
    /// changed.
    bool insert(ObjectNode& child, std::size_t index);
    bool append(ObjectNode& child) { return insert(child, m_children.size()); }
    void remove() noexcept;
    /// Moves a direct child to `index` (clamped); false when it is there already.
    bool moveChild(ObjectNode& child, std::size_t index) noexcept;
    /// The owner has another name.
    void nameChanged() noexcept;

    /// The services of the window that this node stands in, null while it stands in none.
    RootServices* services() noexcept { return root().m_owner.rootServices(); }

    // Geometry, in window coordinates.
    const Rect& rect() const noexcept { return m_rect; }
    void setRect(const Rect& rect) noexcept
    {
        m_rect = rect;
        if (m_parent)
            m_parent->blocksChanged();
    }
    const Position& position() const noexcept { return m_position; }
    void setPosition(const Position& position) noexcept { m_position = position; }
    /// The part of its rectangle that no ancestor cuts away; empty when it is not shown.
    Rect shownRect() const noexcept;

    // State.
    bool has(NodeFlag flag) const noexcept { return (m_flags & static_cast<std::uint32_t>(flag)) != 0; }
    /// Answers whether the flag changed.
    bool set(NodeFlag flag, bool on) noexcept;
    bool isShown() const noexcept { return allHave(NodeFlag::Visible); }
    bool isUsable() const noexcept { return allHave(NodeFlag::Enabled); }
    bool redraws() const noexcept { return allHave(NodeFlag::Redraws); }
    std::uint8_t opacity() const noexcept { return m_opacity; }
    void setOpacity(std::uint8_t opacity) noexcept { m_opacity = opacity; }
    /// Its place among the tab stops of the window, from 0; -1 for none: then the tree says where it comes.
    std::int32_t tabOrder() const noexcept { return m_tabOrder; }
    void setTabOrder(std::int32_t order) noexcept { m_tabOrder = order; }

private:
    friend class ChildIteration;
    friend class NameIndex;
    friend class WeakNode;
    bool allHave(NodeFlag flag) const noexcept;
    void eraseAt(std::size_t index) noexcept;
    void insertAt(std::size_t index, ObjectNode& child);
    void blocksChanged() noexcept
    {
        if (m_blocks)
            m_blocks->isKnown = false;
    }
    bool blockTouches(std::size_t block, const Rect& part) noexcept;

    /// What the children cover together, so many at a time: a walk over thousands of them leaves out those that are far
    /// from what it looks for without reading each. Made for nodes of many children, anew after any of them moved.
    struct Blocks {
        static constexpr std::size_t kChildren = 64;
        std::vector<Rect> bounds;
        bool isKnown = false;
    };

    static constexpr std::uint32_t kInitialFlags =
        static_cast<std::uint32_t>(NodeFlag::Visible) | static_cast<std::uint32_t>(NodeFlag::Enabled) |
        static_cast<std::uint32_t>(NodeFlag::TakesMouse) | static_cast<std::uint32_t>(NodeFlag::Redraws);

    NodeOwner& m_owner;
    ObjectNode* m_parent = nullptr;
    std::vector<ObjectNode*> m_children;
    std::unique_ptr<Blocks> m_blocks;
    class ChildIteration* m_iterations = nullptr; // those under way over m_children
    class WeakNode* m_weakNodes = nullptr;        // those that point here
    Position m_position;
    // Side by side, for they are all that drawing and searching look at in most of thousands of nodes.
    Rect m_rect;
    std::uint32_t m_flags = kInitialFlags;
    std::uint8_t m_opacity = 255;
    std::uint16_t m_nameKey = 0; // where the index of names has it
    std::int32_t m_tabOrder = -1;
};

/// Walks over a node's children while what it calls may add, move or remove any of them, or end the node itself: each
/// child that stays is met once (one that is moved meanwhile perhaps again), one that was removed is not met, and the
/// walk ends with the node. Costs no allocation.
class ChildIteration {
public:
    enum class Order { BottomToTop, TopToBottom };
    explicit ChildIteration(ObjectNode& node, Order order = Order::BottomToTop) noexcept;
    ChildIteration(const ChildIteration&) = delete;
    ChildIteration& operator=(const ChildIteration&) = delete;
    ~ChildIteration();

    /// The next child, null at the end.
    ObjectNode* next() noexcept;
    /// The same, but children that lie wholly outside of `part` may be left out.
    ObjectNode* nextNear(const Rect& part) noexcept;

private:
    friend class ObjectNode;
    void inserted(std::size_t index) noexcept;
    void erased(std::size_t index) noexcept;

    ObjectNode* m_node;
    ChildIteration* m_nextIteration;
    std::size_t m_position; // BottomToTop: the next child; TopToBottom: one past the next child
    Order m_order;
};

/// A pointer to a node that turns null when the node ends: for focus, capture, registrations, and to look after a call
/// out whether an object still lives.
class WeakNode {
public:
    WeakNode() noexcept = default;
    explicit WeakNode(ObjectNode* node) noexcept { link(node); }
    WeakNode(const WeakNode& other) noexcept { link(other.m_node); }
    ~WeakNode() { unlink(); }
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the node is read before the old link goes
    WeakNode& operator=(const WeakNode& other) noexcept
    {
        reset(other.m_node);
        return *this;
    }

    void reset(ObjectNode* node = nullptr) noexcept
    {
        if (node != m_node) {
            unlink();
            link(node);
        }
    }
    ObjectNode* get() const noexcept { return m_node; }
    ObjectNode* operator->() const noexcept { return m_node; }
    explicit operator bool() const noexcept { return m_node != nullptr; }

private:
    friend class ObjectNode;
    void link(ObjectNode* node) noexcept;
    void unlink() noexcept;

    ObjectNode* m_node = nullptr;
    WeakNode* m_previous = nullptr;
    WeakNode* m_next = nullptr;
};

} // namespace ambrel
