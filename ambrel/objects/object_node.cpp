#include "ambrel/objects/object_node.h"

#include "ambrel/objects/name_index.h"

#include <algorithm>
#include <new>
#include <utility>

namespace ambrel {

namespace {

/// For the many rectangles of a walk: empty ones inside of the part may count as meeting it.
bool meets(const Rect& a, const Rect& part) noexcept
{
    return a.left < part.right && part.left < a.right && a.top < part.bottom && part.top < a.bottom;
}

} // namespace

ObjectNode::~ObjectNode()
{
    remove();
    for (ObjectNode* child : m_children)
        child->m_parent = nullptr;
    for (ChildIteration* iteration = m_iterations; iteration; iteration = iteration->m_nextIteration)
        iteration->m_node = nullptr;
    for (WeakNode* weak = m_weakNodes; weak;) {
        WeakNode* next = weak->m_next;
        weak->m_node = nullptr;
        weak->m_previous = weak->m_next = nullptr;
        weak = next;
    }
}

ObjectNode& ObjectNode::root() noexcept
{
    ObjectNode* node = this;
    while (node->m_parent)
        node = node->m_parent;
    return *node;
}

int ObjectNode::indexOf(const ObjectNode& child) const noexcept
{
    if (child.m_parent != this)
        return -1;
    // From the top: what was added last is asked for most.
    for (std::size_t i = m_children.size(); i-- > 0;) {
        if (m_children[i] == &child)
            return static_cast<int>(i);
    }
    return -1;
}

bool ObjectNode::holds(const ObjectNode& other) const noexcept
{
    const ObjectNode* node = &other;
    while (node && node != this)
        node = node->m_parent;
    return node == this;
}

bool ObjectNode::insert(ObjectNode& child, std::size_t index)
{
    if (child.holds(*this))
        return false;
    if (child.m_parent == this) {
        moveChild(child, index);
        return true;
    }
    if (m_children.size() == m_children.capacity())
        m_children.reserve(2 * m_children.size() + 4); // nothing below can fail
    child.remove();
    insertAt(std::min(index, m_children.size()), child);
    child.m_parent = this;
    if (NameIndex* names = root().m_owner.nameIndex())
        names->added(child);
    return true;
}

void ObjectNode::remove() noexcept
{
    if (ObjectNode* parent = m_parent) {
        if (NameIndex* names = root().m_owner.nameIndex())
            names->removed(*this);
        parent->eraseAt(static_cast<std::size_t>(parent->indexOf(*this)));
        m_parent = nullptr;
    }
}

bool ObjectNode::moveChild(ObjectNode& child, std::size_t index) noexcept
{
    const int present = indexOf(child);
    if (present < 0)
        return false;
    index = std::min(index, m_children.size() - 1);
    if (static_cast<std::size_t>(present) == index)
        return false;
    eraseAt(static_cast<std::size_t>(present));
    insertAt(index, child); // within the capacity just given up: cannot fail
    return true;
}

void ObjectNode::nameChanged() noexcept
{
    if (NameIndex* names = m_parent ? root().m_owner.nameIndex() : nullptr)
        names->renamed(*this);
}

void ObjectNode::eraseAt(std::size_t index) noexcept
{
    m_children.erase(m_children.begin() + static_cast<std::ptrdiff_t>(index));
    blocksChanged();
    for (ChildIteration* iteration = m_iterations; iteration; iteration = iteration->m_nextIteration)
        iteration->erased(index);
}

void ObjectNode::insertAt(std::size_t index, ObjectNode& child)
{
    m_children.insert(m_children.begin() + static_cast<std::ptrdiff_t>(index), &child);
    blocksChanged();
    for (ChildIteration* iteration = m_iterations; iteration; iteration = iteration->m_nextIteration)
        iteration->inserted(index);
}

bool ObjectNode::blockTouches(std::size_t block, const Rect& part) noexcept
{
    if (m_children.size() <= Blocks::kChildren)
        return true;
    if (!m_blocks || !m_blocks->isKnown) {
        try {
            if (!m_blocks)
                m_blocks = std::make_unique<Blocks>();
            m_blocks->bounds.assign((m_children.size() + Blocks::kChildren - 1) / Blocks::kChildren, Rect());
        } catch (const std::bad_alloc&) {
            return true; // each child is looked at, then
        }
        for (std::size_t i = 0; i < m_children.size(); ++i) {
            Rect& bounds = m_blocks->bounds[i / Blocks::kChildren];
            bounds = bounds.united(m_children[i]->m_rect);
        }
        m_blocks->isKnown = true;
    }
    return meets(m_blocks->bounds[block], part);
}

Rect ObjectNode::shownRect() const noexcept
{
    Rect shown = m_rect;
    for (const ObjectNode* node = this; node; node = node->m_parent) {
        if (!node->has(NodeFlag::Visible))
            return {};
        shown = shown.intersection(node->m_rect);
    }
    return shown;
}

bool ObjectNode::set(NodeFlag flag, bool on) noexcept
{
    const std::uint32_t before = m_flags;
    const auto bit = static_cast<std::uint32_t>(flag);
    m_flags = on ? before | bit : before & ~bit;
    return m_flags != before;
}

bool ObjectNode::allHave(NodeFlag flag) const noexcept
{
    const ObjectNode* node = this;
    while (node && node->has(flag))
        node = node->m_parent;
    return !node;
}

ChildIteration::ChildIteration(ObjectNode& node, Order order) noexcept
    : m_node(&node), m_nextIteration(node.m_iterations),
      m_position(order == Order::BottomToTop ? 0 : node.m_children.size()), m_order(order)
{
    node.m_iterations = this;
}

ChildIteration::~ChildIteration()
{
    if (!m_node)
        return;
    // Iterations nest, but one may be ended out of order by an exception's way out.
    ChildIteration** link = &m_node->m_iterations;
    while (*link != this)
        link = &(*link)->m_nextIteration;
    *link = m_nextIteration;
}

ObjectNode* ChildIteration::next() noexcept
{
    if (!m_node)
        return nullptr;
    if (m_order == Order::BottomToTop)
        return m_position < m_node->m_children.size() ? m_node->m_children[m_position++] : nullptr;
    return m_position > 0 ? m_node->m_children[--m_position] : nullptr;
}

ObjectNode* ChildIteration::nextNear(const Rect& part) noexcept
{
    constexpr std::size_t kBlock = ObjectNode::Blocks::kChildren;
    const bool upwards = m_order == Order::BottomToTop;
    while (m_node) {
        const std::vector<ObjectNode*>& children = m_node->m_children;
        if (upwards ? m_position >= children.size() : m_position == 0)
            return nullptr;
        const std::size_t at = upwards ? m_position : m_position - 1;
        const std::size_t blockBegin = at / kBlock * kBlock;
        const std::size_t blockEnd = std::min(blockBegin + kBlock, children.size());
        const bool entersBlock = at == (upwards ? blockBegin : blockEnd - 1);
        if (entersBlock && !m_node->blockTouches(at / kBlock, part)) {
            m_position = upwards ? blockEnd : blockBegin;
            continue;
        }
        m_position = upwards ? at + 1 : at;
        if (meets(children[at]->m_rect, part))
            return children[at];
    }
    return nullptr;
}

void ChildIteration::inserted(std::size_t index) noexcept
{
    if (index < m_position)
        ++m_position;
}

void ChildIteration::erased(std::size_t index) noexcept
{
    if (index < m_position)
        --m_position;
}

void WeakNode::link(ObjectNode* node) noexcept
{
    m_node = node;
    if (!node)
        return;
    m_next = node->m_weakNodes;
    if (m_next)
        m_next->m_previous = this;
    node->m_weakNodes = this;
}

void WeakNode::unlink() noexcept
{
    if (!m_node)
        return;
    (m_previous ? m_previous->m_next : m_node->m_weakNodes) = m_next;
    if (m_next)
        m_next->m_previous = m_previous;
    m_node = nullptr;
    m_previous = m_next = nullptr;
}

} // namespace ambrel
