// Objects drawn aside: what lies behind one, in front of it, and itself, on bitmaps and plain device contexts.
#pragma once

#include "ambrel/objects/object_node.h"
#include "frame/com/com_ptr.h"
#include "host/host.h"

namespace ambrel {

/// What of a window's picture to draw, seen from one of its objects. Put over each other in this order, the three give
/// the window's picture.
enum class LayerPart {
    Behind,  // everything drawn before the object, on the window's ground
    Itself,  // the object with what lies beneath it in the tree, shown or not, uncut by its ancestors
    InFront, // everything drawn after it
};

enum class Beneath { Drawn, LeftOut };

/// Draws a part into a new bitmap that covers `rect` (window coordinates). Null for an empty rectangle, one beyond what
/// bitmaps may have, and while a layer of the same object is being drawn. Runs foreign code. Throws std::bad_alloc.
morvane::ComPtr<ILayerGraphics> drawLayer(ObjectNode& object, LayerPart part, const Rect& rect);

/// Puts the object, where it meets `update` (window coordinates), over what a device context shows. The context has
/// window coordinates, or those of the object's left top corner when it is a memory context of the object's own. False
/// when nothing of it is there. Runs foreign code. Throws std::bad_alloc.
bool drawOnto(HDC target, ObjectNode& object, Beneath beneath, const Rect& update, bool isObjectsOwn);

/// Puts the object's shown children over what a device context in window coordinates shows. As above.
bool drawChildrenOnto(HDC target, ObjectNode& parent, const Rect& part);

/// A copy of what the object's window was last drawn as; null while it has no picture. Throws std::bad_alloc.
morvane::ComPtr<ILayerGraphics> copyOfWindowPicture(ObjectNode& object);

/// Replaces a part of the window's picture by pixels of a device context, scaled to fit, and shows it. It lasts until
/// the objects there are drawn again. False when there is no picture or nothing to replace. Throws std::bad_alloc.
bool changeWindowPicture(ObjectNode& object, const Rect& target, HDC from, const Rect& source);

} // namespace ambrel
