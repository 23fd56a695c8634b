// How objects of the tree are drawn, lowest first, each inside what its ancestors leave visible.
#pragma once

#include "ambrel/objects/object_node.h"
#include "ambrel/render/render_dc.h"

namespace ambrel {

using morvane::ComPtr;

/// Draws the shown children of a node, and what lies beneath them, where they touch `part` (window coordinates).
/// Objects that are not wholly opaque are drawn aside and blended, where the context is one of this runtime's. The
/// context's update rectangle is as before afterwards. Runs foreign code.
void drawChildren(ObjectNode& parent, IVexRenderDC& dc, const Rect& part);

/// Draws an object and what lies beneath it where they touch `part`, unless it is hidden. As drawChildren does.
void drawObject(ObjectNode& node, IVexRenderDC& dc, const Rect& part);

/// Draws an object without what lies beneath it, hidden or not, with what an application laid over it. The context's
/// update rectangle stays as it is. Runs foreign code, which may end the object.
void drawAlone(ObjectNode& node, IVexRenderDC& dc, const Rect& part);

/// Confines drawing to a rectangle for the length of a scope, and weakens what is drawn there by an opacity (not on a
/// foreign context). Throws std::bad_alloc.
class DrawingInside {
public:
    DrawingInside(IVexRenderDC& dc, const Rect& rect, int opacity);
    DrawingInside(const DrawingInside&) = delete;
    DrawingInside& operator=(const DrawingInside&) = delete;
    ~DrawingInside();

private:
    ComPtr<IVexRenderDC> m_dc;
    ComPtr<RenderDC> m_layers; // null when nothing is weakened
    SkinRect m_former{};
};

/// The mark of the keyboard focus: a ring along the inside of a rectangle.
void drawFocusMark(IVexRenderDC& dc, const Rect& rect);

/// Where the focus mark of an object lies, its outer edge in window coordinates: a little way around the object, so
/// that it covers nothing of it, but never beyond its parent, which would cut it.
Rect focusMarkRect(const ObjectNode& node, Scale scale);

} // namespace ambrel
