#include "ambrel/objects/drawing.h"

#include "ambrel/objects/skin_object_core.h"
#include "ambrel/render/focus_mark.h"
#include "ambrel/render/render_dc.h"

namespace ambrel {

namespace {

constexpr int kFocusRingWidth = 2; // on a foreign context, which has no rounded ring

/// Draws aside, for objects that are not wholly opaque. Does nothing on a foreign context.
class Layer {
public:
    Layer(IVexRenderDC& dc, const Rect& rect, int opacity) : m_dc(opacity < 255 ? fromInterface(&dc) : nullptr)
    {
        if (m_dc)
            m_dc->pushLayer(rect, opacity);
    }
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;
    ~Layer()
    {
        if (m_dc)
            m_dc->popLayer();
    }

private:
    ComPtr<RenderDC> m_dc;
};

void drawObject(ObjectNode& node, IVexRenderDC& dc, const Rect& part)
{
    if (!node.has(NodeFlag::Visible) || node.opacity() == 0)
        return;
    const Rect shown = node.rect().intersection(part);
    if (shown.isEmpty()) // most objects, when one of thousands has changed
        return;
    const ComPtr<IVexControlBase> control(coreOf(node).control());
    if (!control)
        return;
    const SkinRect rect = morvane::toSkinRect(shown);
    dc.SetUpdateRect(rect);
    const Layer layer(dc, shown, node.opacity());
    VARIANT_BOOL drawn = VARIANT_FALSE;
    dc.SetCurrentControl(control.get());
    const WeakNode alive(&node);
    node.set(NodeFlag::BeingDrawn, shown == node.shownRect());
    control->RenderDrawObject(&dc, rect, &drawn);
    if (alive)
        alive.get()->set(NodeFlag::BeingDrawn, false);
    dc.SetCurrentControl(nullptr);
    control->RenderDrawChildren(&dc, rect);
}

} // namespace

void drawChildren(ObjectNode& parent, IVexRenderDC& dc, const Rect& part)
{
    const Rect shown = parent.shownRect().intersection(part);
    if (shown.isEmpty() || parent.childCount() == 0)
        return;
    const ComPtr<IVexRenderDC> hold(&dc);
    SkinRect former{};
    dc.GetUpdateRect(&former);
    ChildIteration children(parent);
    while (ObjectNode* child = children.next())
        drawObject(*child, dc, shown);
    dc.SetUpdateRect(former);
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
