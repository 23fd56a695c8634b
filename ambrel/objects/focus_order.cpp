#include "ambrel/objects/focus_order.h"

#include <algorithm>
#include <vector>

namespace ambrel {

namespace {

bool isStop(const ObjectNode& node) noexcept
{
    return node.has(NodeFlag::TabStop) && !node.rect().isEmpty();
}

/// Whether the walk goes into a node at all: nothing beneath a hidden or disabled one can have the focus.
bool isOpen(const ObjectNode& node) noexcept
{
    return node.has(NodeFlag::Visible) && node.has(NodeFlag::Enabled);
}

/// The stops in the open part of a tree but `from`, in the order in which they are met on the way round from there.
class Round {
public:
    Round(ObjectNode& root, const ObjectNode* from, bool forward) : m_from(from)
    {
        visit(root, true);
        if (m_isOrdered)
            std::stable_sort(m_stops.begin(), m_stops.end(),
                             [](ObjectNode* a, ObjectNode* b) { return place(*a) < place(*b); });
        const auto left = std::find(m_stops.begin(), m_stops.end(), from);
        if (left != m_stops.end()) {
            const auto next = m_stops.erase(left);
            std::rotate(m_stops.begin(), next, m_stops.end());
        }
        if (!forward)
            std::reverse(m_stops.begin(), m_stops.end());
    }

    const std::vector<ObjectNode*>& stops() const noexcept { return m_stops; }

    template <class Predicate>
    ObjectNode* first(Predicate isIt) const
    {
        const auto found = std::find_if(m_stops.begin(), m_stops.end(), isIt);
        return found == m_stops.end() ? nullptr : *found;
    }

private:
    void visit(ObjectNode& node, bool parentOpen)
    {
        const bool open = parentOpen && isOpen(node);
        if (&node == m_from || (open && isStop(node))) {
            m_stops.push_back(&node);
            m_isOrdered = m_isOrdered || node.tabOrder() >= 0;
        }
        // A focused node in a part that was just closed still marks the place where the walk goes on.
        if (!open && !(m_from && node.holds(*m_from)))
            return;
        for (ObjectNode* child : node.children())
            visit(*child, open);
    }

    /// Those without a place come after all that have one.
    static std::uint32_t place(const ObjectNode& node) noexcept { return static_cast<std::uint32_t>(node.tabOrder()); }

    const ObjectNode* m_from;
    std::vector<ObjectNode*> m_stops; // `from` among them until it was found
    bool m_isOrdered = false;
};

} // namespace

ObjectNode* nextTabStop(ObjectNode& root, ObjectNode* from, bool forward, const FocusGroups* groups)
{
    const Round round(root, from, forward);
    if (!groups)
        return round.first([](ObjectNode*) { return true; });
    const std::optional<FocusGroup> left = from ? groups->groupOf(*from) : std::nullopt;
    return round.first([&](ObjectNode* stop) {
        const std::optional<FocusGroup> group = groups->groupOf(*stop);
        if (!group || groups->isChosen(*stop))
            return !group || group != left;
        return group != left && !round.first([&](ObjectNode* other) {
            return groups->isChosen(*other) && groups->groupOf(*other) == group;
        });
    });
}

ObjectNode* nextInGroup(ObjectNode& root, ObjectNode& from, bool forward, const FocusGroups& groups)
{
    const std::optional<FocusGroup> group = groups.groupOf(from);
    if (!group)
        return nullptr;
    return Round(root, &from, forward).first([&](ObjectNode* stop) { return groups.groupOf(*stop) == group; });
}

} // namespace ambrel
