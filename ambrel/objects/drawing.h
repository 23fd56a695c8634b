// How objects of the tree are drawn, lowest first, each inside what its ancestors leave visible.
#pragma once

#include "ambrel/objects/object_node.h"
#include "host/host.h"

namespace ambrel {

/// Draws the shown children of a node, and what lies beneath them, where they touch `part` (window coordinates).
/// Objects that are not wholly opaque are drawn aside and blended, where the context is one of this runtime's. The
/// context's update rectangle is as before afterwards. Runs foreign code.
void drawChildren(ObjectNode& parent, IVexRenderDC& dc, const Rect& part);

/// The mark of the keyboard focus: a ring along the inside of a rectangle.
void drawFocusMark(IVexRenderDC& dc, const Rect& rect);

} // namespace ambrel
