#include "ambrel/objects/focus_order.h"

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

/// Walks the open part of a tree in tree order, remembering what the search asks for.
struct Search {
    const ObjectNode* from;
    bool forward;
    ObjectNode* first = nullptr;
    ObjectNode* last = nullptr;
    ObjectNode* before = nullptr; // the last stop met before `from`
    ObjectNode* after = nullptr;  // the first stop met after `from`
    bool passed = false;

    void visit(ObjectNode& node, bool parentOpen) noexcept
    {
        const bool open = parentOpen && isOpen(node);
        if (&node == from) {
            passed = true;
        } else if (open && isStop(node)) {
            if (!first)
                first = &node;
            last = &node;
            if (!passed)
                before = &node;
            else if (!after)
                after = &node;
        }
        // A focused node in a part that was just closed still marks the place where the walk goes on.
        if (!open && !(from && node.holds(*from)))
            return;
        for (ObjectNode* child : node.children())
            visit(*child, open);
    }

    ObjectNode* result() const noexcept
    {
        if (!passed)
            return forward ? first : last;
        if (forward)
            return after ? after : first;
        return before ? before : last;
    }
};

} // namespace

ObjectNode* nextTabStop(ObjectNode& root, ObjectNode* from, bool forward) noexcept
{
    Search search{from, forward};
    search.visit(root, true);
    return search.result();
}

} // namespace ambrel
