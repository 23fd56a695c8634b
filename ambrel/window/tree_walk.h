// Going through everything beneath a node while what is met may change the tree.
#pragma once

#include "ambrel/objects/object_node.h"

namespace ambrel {

/// Calls `visit(ObjectNode&)` for everything beneath `node`, parents before their children, until it answers true;
/// answers whether it did. `visit` may do anything to the tree: what is removed is not met, what is added may be.
template <class Visit>
bool walkBeneath(ObjectNode& node, Visit&& visit)
{
    ChildIteration children(node);
    while (ObjectNode* child = children.next()) {
        const WeakNode alive(child);
        if (visit(*child))
            return true;
        if (alive && walkBeneath(*child, visit))
            return true;
    }
    return false;
}

} // namespace ambrel
