#include "ambrel/render/render_dc.h"

#include "ambrel/pixels/gradient.h"
#include "ambrel/pixels/stretch.h"
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/colours.h"
#include "ambrel/render/frame_control.h"
#include "ambrel/render/glyph_font.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/render_image.h"
#include "ambrel/render/section_drawing.h"
#include "ambrel/render/text_drawing.h"
#include "host/geometry.h"

#include <algorithm>
#include <utility>

namespace ambrel {

using morvane::filling;
using morvane::returning;
using morvane::toRect;
using morvane::toSkinRect;

RenderDC::RenderDC() = default;

RenderDC::~RenderDC()
{
    setDevice(nullptr);
}

void* RenderDC::findInterface(REFIID iid) noexcept
{
    const bool isOurs = iid == IID_IDispatch || iid == morvane::iidOf<IVexRenderDC>() || iid == kImplementationIid;
    return isOurs ? static_cast<IVexRenderDC*>(this) : nullptr;
}

void RenderDC::setDevice(RenderDevice* device)
{
    if (device)
        device->addContext(*this);
    if (RenderDevice* const former = std::exchange(m_device, device))
        former->removeContext(*this);
}

void RenderDC::deviceGone() noexcept
{
    m_device = nullptr;
    setTarget(nullptr);
}

void RenderDC::setTarget(const DibSurface* surface, Point origin) noexcept
{
    m_layers.clear();
    m_hasGdiDrawing = false;
    m_target = surface;
    m_targetOrigin = origin;
    m_viewport = {};
    m_updateRect = surface ? Rect::at(origin, surface->size()) : Rect{};
}

Scale RenderDC::scale() const noexcept
{
    return m_device ? m_device->scale() : m_ownScale;
}

Rect RenderDC::clip() const noexcept
{
    return m_viewport == Rect{} ? m_updateRect : m_updateRect.intersection(m_viewport);
}

const RenderDC::Layer* RenderDC::currentLayer() const noexcept
{
    const auto found =
        std::find_if(m_layers.rbegin(), m_layers.rend(), [](const Layer& l) { return l.surface != nullptr; });
    return found != m_layers.rend() ? &*found : nullptr;
}

Canvas RenderDC::canvas() noexcept
{
    if (m_hasGdiDrawing)
        finishDrawing();
    const Layer* layer = currentLayer();
    if (!layer && !m_target)
        return {};
    Canvas canvas = layer ? layer->surface->canvas(layer->origin) : m_target->canvas(m_targetOrigin);
    canvas.clip = canvas.clip.intersection(clip());
    return canvas;
}

void RenderDC::pushLayer(const Rect& rect, int opacity)
{
    const Rect shown = canvas().visible(rect);
    std::unique_ptr<DibSurface> surface;
    if (opacity < 255 && !shown.isEmpty()) {
        surface = std::make_unique<DibSurface>(shown.size());
        if (surface->isEmpty())
            throw std::bad_alloc();
    }
    m_layers.push_back({std::move(surface), shown.topLeft(), std::clamp(opacity, 0, 255)});
}

void RenderDC::popLayer() noexcept
{
    if (m_layers.empty())
        return;
    if (m_hasGdiDrawing)
        finishDrawing();
    const Layer layer = std::move(m_layers.back());
    m_layers.pop_back();
    if (layer.surface)
        blendImage(canvas(), layer.origin, layer.surface->pixels(), layer.opacity);
}

HDC RenderDC::beginGdi() noexcept
{
    const Canvas where = canvas();
    if (where.pixels.isEmpty())
        return nullptr;
    const Layer* layer = currentLayer();
    HDC dc = layer ? layer->surface->dc() : m_target->dc();
    SetViewportOrgEx(dc, -where.origin.x, -where.origin.y, nullptr);
    SelectClipRgn(dc, nullptr);
    const Rect visible = where.clip;
    IntersectClipRect(dc, visible.left, visible.top, visible.right, visible.bottom);
    m_hasGdiDrawing = true;
    return dc;
}

void RenderDC::finishDrawing() noexcept
{
    if (!std::exchange(m_hasGdiDrawing, false))
        return;
    const Canvas where = canvas();
    const bool isDevices = !currentLayer() && m_device && m_target == m_device->surface();
    if (isDevices && m_device->isOpaque())
        makeOpaque(where, where.clip);
    else
        repairAlpha(where);
}

/// Checks what every drawing method is given: a rectangle, a result's place and a target.
template <class Drawing>
HRESULT RenderDC::draw(const SkinRect* rect, VARIANT_BOOL* result, Drawing&& drawing) noexcept
{
    return filling(result, [&](VARIANT_BOOL& drawn) {
        if (!rect)
            return E_POINTER;
        const Canvas where = canvas();
        if (where.pixels.isEmpty())
            return S_FALSE;
        drawn = morvane::toVariantBool(drawing(where, toRect(*rect)));
        return S_OK;
    });
}

STDMETHODIMP RenderDC::SetRenderDCPtr(hyper pointer) noexcept
{
    // Our contexts cannot become another one; setting what is there already changes nothing.
    return pointer == reinterpret_cast<hyper>(this) ? S_OK : E_INVALIDARG;
}

STDMETHODIMP RenderDC::GetRenderDCPtr(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(this); });
}

STDMETHODIMP RenderDC::FillColor(SkinRect* rect, OLE_COLOR start, OLE_COLOR end, short angle,
                                 VARIANT_BOOL* result) noexcept
{
    return draw(rect, result, [&](const Canvas& where, const Rect& r) {
        fillGradient(where, r, toPixel(start), toPixel(end), angle);
        return true;
    });
}

STDMETHODIMP RenderDC::FillSolidColor(SkinRect* rect, OLE_COLOR colour, VARIANT_BOOL* result) noexcept
{
    return draw(rect, result, [&](const Canvas& where, const Rect& r) {
        fillRect(where, r, toPixel(colour));
        return true;
    });
}

STDMETHODIMP RenderDC::DrawImage(IVexRenderImage* image, SkinRect* target, SkinRect* source, VARIANT_BOOL stretch,
                                 OLE_COLOR transparent, VARIANT_BOOL, VARIANT_BOOL* result) noexcept
{
    return draw(target, result, [&](const Canvas& where, const Rect& r) {
        const auto ours = implementationOf<RenderImage>(image);
        if (!ours)
            return false;
        const Rect from = source ? toRect(*source) : Rect::at({}, ours->size());
        return ours->draw(where, r, from, stretch != VARIANT_FALSE, transparent);
    });
}

STDMETHODIMP RenderDC::DrawImageSection(SkinImageSection* section, SkinRect* target, VARIANT_BOOL* result) noexcept
{
    return draw(target, result, [&](const Canvas& where, const Rect& r) {
        if (!section || !m_device)
            return false;
        const auto image =
            implementationOf<RenderImage>(m_device->findImage(morvane::viewOf(section->szImageName)).get());
        if (!image)
            return false;
        const Rect shown = where.visible(r);
        if (shown.isEmpty())
            return true;
        const Surface form =
            makeForm(sectionOf(*section), image->pixels(), 100, scale(), r.size(), 0, shown.shifted(-r.left, -r.top));
        blendImage(where, shown.topLeft(), form.view(), std::clamp<int>(section->nOpacity, 0, 255));
        return true;
    });
}

STDMETHODIMP RenderDC::DrawText(BSTR text, SkinRect* rect, hyper font, OLE_COLOR colour, long type,
                                VARIANT_BOOL* result) noexcept
{
    return draw(rect, result, [&](const Canvas& where, const Rect& r) {
        const auto glyphs = FontCache::instance().fromHandle(font, scale());
        drawText(where, *glyphs, morvane::viewOf(text), r, formatOfFlags(type), toPixel(colour));
        return true;
    });
}

STDMETHODIMP RenderDC::DrawFrameControl(SkinRect* rect, long type, long state, VARIANT_BOOL* result) noexcept
{
    return draw(rect, result, [&](const Canvas& where, const Rect& r) {
        if (drawFrameControl(where, r, static_cast<UINT>(type), static_cast<UINT>(state), scale()))
            return true;
        RECT system = morvane::toWin32(r);
        return ::DrawFrameControl(beginGdi(), &system, static_cast<UINT>(type), static_cast<UINT>(state)) != 0;
    });
}

STDMETHODIMP RenderDC::DrawLine(short x1, short y1, short x2, short y2, short penSize, short alpha, OLE_COLOR colour,
                                VARIANT_BOOL* result) noexcept
{
    constexpr SkinRect kAnywhere{};
    return draw(&kAnywhere, result, [&](const Canvas& where, const Rect&) {
        drawLine(where, {x1, y1}, {x2, y2}, penSize, weakened(toPixel(colour), std::clamp<int>(alpha, 0, 255)));
        return true;
    });
}

STDMETHODIMP RenderDC::IsValidateRect(SkinRect* rect, VARIANT_BOOL* result) noexcept
{
    return draw(rect, result, [&](const Canvas& where, const Rect& r) { return !where.visible(r).isEmpty(); });
}

STDMETHODIMP RenderDC::RenderPartImagePart(SkinRect* target, SkinRect* source, hyper bitmap, VARIANT_BOOL stretch,
                                           VARIANT_BOOL* result) noexcept
{
    return draw(target, result, [&](const Canvas& where, const Rect& r) {
        const Surface whole = surfaceOfBitmap(reinterpret_cast<HBITMAP>(bitmap));
        const Rect wanted = source ? toRect(*source) : whole.view().bounds();
        const Rect there = wanted.intersection(whole.view().bounds());
        const ConstPixelView part = whole.view().part(there);
        if (part.isEmpty() || r.isEmpty())
            return false;
        if (stretch == VARIANT_FALSE) {
            blendImage(where.clippedTo(r), r.topLeft() + (there.topLeft() - wanted.topLeft()), part);
            return true;
        }
        const Rect shown = where.visible(r);
        Surface scaled(shown.size());
        stretchImagePart(scaled.view(), part, r.size(), shown.topLeft() - r.topLeft());
        blendImage(where, shown.topLeft(), scaled.view());
        return true;
    });
}

HRESULT RenderDC::makeScratch(long width, long height, bool hasAlpha, hyper* result) noexcept
{
    return filling(result, [&](hyper& dc) {
        auto surface = std::make_unique<DibSurface>(Size{static_cast<int>(width), static_cast<int>(height)});
        if (surface->isEmpty())
            return E_INVALIDARG;
        dc = reinterpret_cast<hyper>(surface->dc());
        m_scratch.push_back({std::move(surface), hasAlpha});
        return S_OK;
    });
}

STDMETHODIMP RenderDC::GetHDC(long width, long height, hyper* result) noexcept
{
    return makeScratch(width, height, true, result);
}

STDMETHODIMP RenderDC::GetHDCNoAlpha(long width, long height, hyper* result) noexcept
{
    return makeScratch(width, height, false, result);
}

void RenderDC::drawScratch(const Scratch& scratch, Point at, const Rect& source)
{
    const Canvas inside = scratch.surface->canvas();
    if (scratch.hasAlpha)
        repairAlpha(inside);
    else
        makeOpaque(inside, inside.clip);
    const Rect there = source.intersection(inside.pixels.bounds());
    blendImage(canvas(), at + (there.topLeft() - source.topLeft()), inside.pixels.part(there));
}

STDMETHODIMP RenderDC::FlushHDC(hyper dc, long x, long y, SkinRect* source, VARIANT_BOOL autoDelete) noexcept
{
    return morvane::guarded([&] {
        const Point at{static_cast<int>(x), static_cast<int>(y)};
        const auto found = std::find_if(m_scratch.begin(), m_scratch.end(), [&](const Scratch& s) {
            return reinterpret_cast<hyper>(s.surface->dc()) == dc;
        });
        if (found == m_scratch.end())
            return E_INVALIDARG;
        if (hasTarget())
            drawScratch(*found, at, source ? toRect(*source) : Rect::at({}, found->surface->size()));
        if (autoDelete != VARIANT_FALSE)
            m_scratch.erase(found);
        return S_OK;
    });
}

STDMETHODIMP RenderDC::SetUpdateRect(SkinRect rect) noexcept
{
    m_updateRect = toRect(rect);
    return S_OK;
}

STDMETHODIMP RenderDC::GetUpdateRect(SkinRect* result) noexcept
{
    return returning(result, [&] { return toSkinRect(m_updateRect); });
}

void RenderDC::drawForeignDc(HDC dc, Point at, const Rect& source) noexcept
{
    HDC target = beginGdi();
    BitBlt(target, at.x, at.y, source.width(), source.height(), dc, source.left, source.top, SRCCOPY);
    const Canvas where = canvas();
    makeOpaque(where, Rect::at(at, source.size()));
}

STDMETHODIMP RenderDC::DrawHDC(hyper dc, long x, long y, SkinRect* source) noexcept
{
    return morvane::guarded([&] {
        if (!source)
            return E_POINTER;
        HDC from = reinterpret_cast<HDC>(dc);
        if (GetObjectType(from) != OBJ_DC && GetObjectType(from) != OBJ_MEMDC)
            return E_INVALIDARG;
        if (!hasTarget())
            return S_FALSE;
        drawForeignDc(from, {static_cast<int>(x), static_cast<int>(y)}, toRect(*source));
        return S_OK;
    });
}

STDMETHODIMP RenderDC::SetViewport(SkinRect rect) noexcept
{
    m_viewport = toRect(rect);
    return S_OK;
}

STDMETHODIMP RenderDC::GetViewport(SkinRect* result) noexcept
{
    return returning(result, [&] { return toSkinRect(m_viewport); });
}

STDMETHODIMP RenderDC::GetRenderDevice(hyper* result) noexcept
{
    return returning(result, [&] { return m_device ? m_device->handle() : 0; });
}

STDMETHODIMP RenderDC::GetDC(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(beginGdi()); });
}

STDMETHODIMP RenderDC::GetType(long* result) noexcept
{
    return returning(result, [] { return VEX_RENDERENGINE_GDI; });
}

STDMETHODIMP RenderDC::SetCurrentControl(IVexControlBase* control) noexcept
{
    VARIANT_BOOL mirrored = VARIANT_FALSE;
    if (control)
        control->IsMirrorObject(&mirrored);
    m_isMirrored = mirrored != VARIANT_FALSE;
    const auto former = std::exchange(m_currentControl, morvane::ComPtr(control)); // may end with this call
    return S_OK;
}

STDMETHODIMP RenderDC::GetCurrentControl(IVexControlBase** result) noexcept
{
    return returning(result, [&] { return m_currentControl; });
}

} // namespace ambrel
