#include "ambrel/objects/layers.h"

#include "ambrel/objects/drawing.h"
#include "ambrel/objects/skin_object_core.h"
#include "ambrel/pixels/stretch.h"
#include "ambrel/render/layer_graphics.h"
#include "ambrel/render/render_device.h"
#include "frame/com/instance.h"

namespace ambrel {

namespace {

/// What is being drawn aside right now, innermost first. An object whose drawing asks for its own layer would otherwise
/// never come to an end.
class Underway {
public:
    explicit Underway(ObjectNode& object) noexcept : m_object(&object), m_outer(innermost()) { innermost() = this; }
    Underway(const Underway&) = delete;
    Underway& operator=(const Underway&) = delete;
    ~Underway() { innermost() = m_outer; }

    static bool has(const ObjectNode& object) noexcept
    {
        for (const Underway* each = innermost(); each; each = each->m_outer)
            if (each->m_object.get() == &object)
                return true;
        return false;
    }

private:
    static Underway*& innermost() noexcept
    {
        static Underway* drawing = nullptr; // of the user-interface thread
        return drawing;
    }

    WeakNode m_object;
    Underway* m_outer;
};

RenderDevice* deviceOf(ObjectNode& object) noexcept
{
    RootServices* const window = object.services();
    return window ? RenderDevice::fromHandle(window->renderDevice()) : nullptr;
}

/// A drawing context on a bitmap for the length of a scope; afterwards it draws nothing, whoever kept it.
class AsideContext {
public:
    AsideContext(RenderDevice* device, const DibSurface& surface, Point origin)
        : m_dc(morvane::Instance<RenderDC>::make())
    {
        m_dc->setDevice(device);
        m_dc->setTarget(&surface, origin);
    }
    AsideContext(const AsideContext&) = delete;
    AsideContext& operator=(const AsideContext&) = delete;
    ~AsideContext()
    {
        m_dc->finishDrawing();
        m_dc->setTarget(nullptr);
        m_dc->setDevice(nullptr);
    }

    RenderDC& dc() noexcept { return *m_dc.get(); }

private:
    ComPtr<RenderDC> m_dc;
};

/// Draws what lies behind or in front of an object, branch by branch.
class Surroundings {
public:
    Surroundings(ObjectNode& object, LayerPart part, RenderDC& dc) noexcept
        : m_object(&object), m_isBehind(part == LayerPart::Behind), m_dc(dc)
    {
    }

    void drawBranch(ObjectNode& branch, const Rect& part)
    {
        bool isPassed = false;
        ChildIteration children(branch);
        while (ObjectNode* child = children.next()) {
            const ObjectNode* const object = m_object.get();
            if (!object) // ended by what was drawn
                return;
            if (!isPassed && child->holds(*object)) {
                isPassed = true;
                if (child != object)
                    drawAncestor(*child, part);
            } else if (isPassed != m_isBehind) {
                drawObject(*child, m_dc, part);
            }
        }
    }

private:
    void drawAncestor(ObjectNode& ancestor, const Rect& part)
    {
        const Rect shown = ancestor.rect().intersection(part);
        if (!ancestor.has(NodeFlag::Visible) || shown.isEmpty())
            return;
        const WeakNode alive(&ancestor);
        const DrawingInside inside(m_dc, shown, ancestor.opacity());
        if (m_isBehind)
            drawAlone(ancestor, m_dc, shown);
        if (alive)
            drawBranch(ancestor, shown);
    }

    WeakNode m_object;
    bool m_isBehind;
    RenderDC& m_dc;
};

void drawItself(ObjectNode& object, RenderDC& dc, Beneath beneath, const Rect& part)
{
    const DrawingInside inside(dc, part, object.opacity());
    const WeakNode alive(&object);
    drawAlone(object, dc, part);
    if (alive && beneath == Beneath::Drawn)
        drawChildren(object, dc, part);
}

/// Draws onto a surface over `part` and puts it over what the device context shows, `shift` away from there.
template <class Draw>
bool drawThrough(HDC target, ObjectNode& object, const Rect& part, Point shift, Draw&& draw)
{
    if (part.isEmpty() || Underway::has(object))
        return false;
    const DibSurface aside(part.size());
    if (aside.isEmpty())
        return false;
    {
        const Underway underway(object);
        AsideContext context(deviceOf(object), aside, part.topLeft());
        draw(context.dc());
    }
    // Not before: what was drawn may have changed what the device context shows.
    const Rect place = part.shifted(shift.x, shift.y);
    const BorrowedPixels pixels(target, place);
    if (pixels.isEmpty())
        return false;
    blendImage(pixels.canvas(), place.topLeft(), aside.pixels());
    return true;
}

ComPtr<LayerGraphics> makeLayer(const Rect& rect)
{
    auto layer = morvane::Instance<LayerGraphics>::make();
    return layer->cover(rect) ? ComPtr<LayerGraphics>(layer.get()) : nullptr;
}

/// What lies behind every object.
void drawGround(ObjectNode& object, const RenderDevice& device, const Canvas& canvas)
{
    fillRect(canvas, object.root().rect(), device.ground());
}

} // namespace

ComPtr<ILayerGraphics> drawLayer(ObjectNode& object, LayerPart part, const Rect& rect)
{
    if (Underway::has(object))
        return nullptr;
    const ComPtr<LayerGraphics> layer = makeLayer(rect);
    if (!layer)
        return nullptr;
    const Underway underway(object);
    AsideContext context(deviceOf(object), *layer->surface(), rect.topLeft());
    if (part == LayerPart::Itself) {
        drawItself(object, context.dc(), Beneath::Drawn, rect);
        return layer;
    }
    if (const RenderDevice* device = deviceOf(object); device && part == LayerPart::Behind)
        drawGround(object, *device, context.dc().canvas());
    if (object.parent())
        Surroundings(object, part, context.dc()).drawBranch(object.root(), rect);
    return layer;
}

bool drawOnto(HDC target, ObjectNode& object, Beneath beneath, const Rect& update, bool isObjectsOwn)
{
    const Rect whole = object.rect();
    const Rect part = whole.intersection(update);
    const Point shift = isObjectsOwn ? Point{-whole.left, -whole.top} : Point{};
    return drawThrough(target, object, part, shift, [&](RenderDC& dc) { drawItself(object, dc, beneath, part); });
}

bool drawChildrenOnto(HDC target, ObjectNode& parent, const Rect& part)
{
    const Rect inside = parent.rect().intersection(part);
    return drawThrough(target, parent, inside, {}, [&](RenderDC& dc) { drawChildren(parent, dc, inside); });
}

ComPtr<ILayerGraphics> copyOfWindowPicture(ObjectNode& object)
{
    RenderDevice* const device = deviceOf(object);
    const DibSurface* const picture = device ? device->surface() : nullptr;
    if (!picture || picture->isEmpty())
        return nullptr;
    const ComPtr<LayerGraphics> layer = makeLayer(Rect::at({}, picture->size()));
    if (layer)
        copyImage(layer->surface()->canvas(), {}, picture->pixels());
    return layer;
}

bool changeWindowPicture(ObjectNode& object, const Rect& target, HDC from, const Rect& source)
{
    RenderDevice* const device = deviceOf(object);
    const DibSurface* const picture = device ? device->surface() : nullptr;
    if (!picture || target.isEmpty() || source.isEmpty() || !Surface::isAllowed(target.size()))
        return false;
    const DibSurface taken(source.size());
    if (taken.isEmpty() ||
        !BitBlt(taken.dc(), 0, 0, source.width(), source.height(), from, source.left, source.top, SRCCOPY))
        return false;
    Surface scaled(target.size());
    stretchImage(scaled.view(), taken.pixels());
    const Canvas canvas = picture->canvas();
    copyImage(canvas, target.topLeft(), scaled.view());
    if (!device->isOpaque())
        return true;
    makeOpaque(canvas, target);
    device->present(object.services()->window(), {&target, 1});
    return true;
}

} // namespace ambrel
