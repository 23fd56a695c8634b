// Which object lies under a point.
#pragma once

#include "ambrel/objects/object_node.h"

namespace ambrel {

/// What the point is looked for: a press needs an enabled object no more than a move does (a disabled object swallows
/// input), but only a move asks an object whether it lets moves through.
enum class HitPurpose { Anything, Mouse };

/// The topmost shown object at a point in window coordinates, `root` itself when no descendant is met, null outside. A
/// child is met only where all its ancestors reach. With `Mouse`, objects that do not take the mouse are looked
/// through, though their children are not. Costs the children near the point along the path only.
ObjectNode* hitTest(ObjectNode& root, Point point, HitPurpose purpose = HitPurpose::Mouse);

} // namespace ambrel
