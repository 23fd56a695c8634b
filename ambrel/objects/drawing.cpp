#include "ambrel/objects/drawing.h"

#include "ambrel/objects/skin_object_core.h"
#include "ambrel/render/focus_mark.h"

namespace ambrel {

namespace {

constexpr int kFocusRingWidth = 2;                 // on a foreign context, which has no rounded ring
constexpr int kFocusRingReach = 3;                 // from an object's edge to the ring's outer one, at 100 percent
constexpr int kFarthestMark = 3 * kFocusRingReach; // at the largest scale

/// Marks an object whose shown part is being drawn as a whole: what it asks to have redrawn meanwhile is being drawn
/// anyway. Not for drawings beside the window's own.
class BeingDrawn {
public:
    BeingDrawn(ObjectNode& node, const IVexRenderDC& dc, const Rect& part) : m_node(&node)
    {
        RootServices* const window = node.services();
        m_isWindows = window && window->renderContext() == &dc;
        if (m_isWindows)
            node.set(NodeFlag::BeingDrawn, part == node.shownRect());
    }
    BeingDrawn(const BeingDrawn&) = delete;
    BeingDrawn& operator=(const BeingDrawn&) = delete;
    ~BeingDrawn()
    {
        if (m_isWindows && m_node)
            m_node->set(NodeFlag::BeingDrawn, false);
    }

private:
    WeakNode m_node;
    bool m_isWindows;
};

void drawControl(ObjectNode& node, IVexControlBase& control, IVexRenderDC& dc, const Rect& part)
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    dc.SetCurrentControl(&control);
    const BeingDrawn marked(node, dc, part);
    control.RenderDrawObject(&dc, morvane::toSkinRect(part), &drawn);
    dc.SetCurrentControl(nullptr);
}

/// Over what lies beneath the object and beside it, below what covers it. Also when only the ground around the object
/// is drawn anew.
void drawMarkAround(ObjectNode& node, IVexRenderDC& dc, const Rect& part)
{
    RootServices* const window = node.services();
    const ComPtr<RenderDC> own = fromInterface(&dc);
    if (!window || !own || !node.has(NodeFlag::AsksForMark) || !window->showsFocusMarks())
        return;
    const Rect mark = focusMarkRect(node, own->scale());
    const Rect shown = mark.intersection(part);
    if (shown.isEmpty())
        return;
    const DrawingInside inside(dc, shown, node.opacity());
    drawFocusMark(own->canvas(), mark, own->scale());
}

} // namespace

Rect focusMarkRect(const ObjectNode& node, Scale scale)
{
    return node.parent() ? node.rect().inflated(scale(kFocusRingReach)).intersection(node.parent()->rect())
                         : node.rect();
}

DrawingInside::DrawingInside(IVexRenderDC& dc, const Rect& rect, int opacity)
    : m_dc(&dc), m_layers(opacity < 255 ? fromInterface(&dc) : nullptr)
{
    dc.GetUpdateRect(&m_former);
    dc.SetUpdateRect(morvane::toSkinRect(rect));
    if (m_layers)
        m_layers->pushLayer(rect, opacity);
}

DrawingInside::~DrawingInside()
{
    if (m_layers)
        m_layers->popLayer();
    m_dc->SetUpdateRect(m_former);
}

void drawAlone(ObjectNode& node, IVexRenderDC& dc, const Rect& part)
{
    const ComPtr<IVexControlBase> control(coreOf(node).control());
    if (!control)
        return;
    const WeakNode alive(&node);
    drawControl(node, *control.get(), dc, part);
    if (alive)
        coreOf(node).drawRetained(dc);
}

void drawObject(ObjectNode& node, IVexRenderDC& dc, const Rect& part)
{
    if (!node.has(NodeFlag::Visible) || node.opacity() == 0)
        return;
    const Rect shown = node.rect().intersection(part);
    const bool hasFocus = node.has(NodeFlag::Focused);
    if (shown.isEmpty() && !hasFocus) // most objects, when one of thousands has changed
        return;
    const ComPtr<IVexControlBase> control(coreOf(node).control());
    if (!control)
        return;
    const WeakNode alive(&node);
    if (!shown.isEmpty()) {
        node.set(NodeFlag::AsksForMark, false);
        const DrawingInside inside(dc, shown, node.opacity());
        drawControl(node, *control.get(), dc, shown);
        control->RenderDrawChildren(&dc, morvane::toSkinRect(shown));
    }
    if (hasFocus && alive)
        drawMarkAround(node, dc, part);
}

void drawChildren(ObjectNode& parent, IVexRenderDC& dc, const Rect& part)
{
    const Rect shown = parent.rect().intersection(part);
    if (shown.isEmpty() || parent.childCount() == 0)
        return;
    const ComPtr<IVexRenderDC> hold(&dc);
    SkinRect update{};
    dc.GetUpdateRect(&update);
    const Rect allowed = morvane::toRect(update);
    const Rect within = allowed.isEmpty() ? shown : shown.intersection(allowed);
    const Rect reach = within.inflated(kFarthestMark); // an object's mark may reach into what its rectangle does not
    ChildIteration children(parent);
    while (ObjectNode* child = children.nextNear(reach))
        drawObject(*child, dc, within);
}

void drawFocusMark(IVexRenderDC& dc, const Rect& rect)
{
    if (const ComPtr<RenderDC> own = fromInterface(&dc)) {
        drawFocusMark(own->canvas(), rect, own->scale());
        return;
    }
    const Rect inner = rect.inflated(-kFocusRingWidth);
    if (inner.isEmpty())
        return;
    const Rect sides[] = {
        {rect.left, rect.top, rect.right, inner.top},
        {rect.left, inner.bottom, rect.right, rect.bottom},
        {rect.left, inner.top, inner.left, inner.bottom},
        {inner.right, inner.top, rect.right, inner.bottom},
    };
    for (const Rect& side : sides) {
        SkinRect record = morvane::toSkinRect(side);
        VARIANT_BOOL drawn = VARIANT_FALSE;
        dc.FillSolidColor(&record, kLightAccent, &drawn);
    }
}

} // namespace ambrel
