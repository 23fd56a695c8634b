#include "ambrel/objects/hit_test.h"

namespace ambrel {

namespace {

ObjectNode* hitBeneath(ObjectNode& node, Point point, HitPurpose purpose)
{
    if (!node.has(NodeFlag::Visible) || !node.rect().contains(point))
        return nullptr;
    const WeakNode self(&node);
    const Rect at{point.x, point.y, point.x + 1, point.y + 1};
    ChildIteration children(node, ChildIteration::Order::TopToBottom);
    while (ObjectNode* child = children.nextNear(at)) {
        if (ObjectNode* hit = hitBeneath(*child, point, purpose))
            return hit;
    }
    if (!self) // what was asked above may have ended it
        return nullptr;
    if (purpose == HitPurpose::Anything || !node.parent())
        return &node;
    const bool takes = node.has(NodeFlag::TakesMouse) && node.owner().takesMouse();
    return takes && self ? self.get() : nullptr;
}

} // namespace

ObjectNode* hitTest(ObjectNode& root, Point point, HitPurpose purpose)
{
    return hitBeneath(root, point, purpose);
}

} // namespace ambrel
