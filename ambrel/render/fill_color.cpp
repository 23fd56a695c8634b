#include "ambrel/render/fill_color.h"

#include "ambrel/pixels/gradient.h"
#include "ambrel/render/colour_filters.h"
#include "ambrel/render/colours.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/render_dc.h"

namespace ambrel {

using morvane::returning;
using morvane::toRect;

void* FillColor::findInterface(REFIID iid) noexcept
{
    return findResourceInterface(iid, kImplementationIid);
}

void FillColor::setColours(OLE_COLOR start, OLE_COLOR end, long rotation) noexcept
{
    m_start = start;
    m_end = end;
    m_rotation = rotation;
    changed();
}

bool FillColor::draw(const Canvas& canvas, const Rect& rect) const
{
    constexpr OLE_COLOR kNone = 0xFFFFFFFF;
    const OLE_COLOR start = m_start != kNone ? m_start : m_end;
    const OLE_COLOR end = m_end != kNone ? m_end : m_start;
    if (start == kNone)
        return false;
    const ColourFilters* const filters = colourFiltersOf(identity().resources);
    const auto shown = [&](OLE_COLOR colour) { return filters ? filters->apply(toPixel(colour)) : toPixel(colour); };
    fillGradient(canvas, rect, shown(start), shown(end), static_cast<int>(m_rotation % 360));
    return true;
}

bool FillColor::preview(HDC dc, const Rect& rect)
{
    const BorrowedPixels target(dc, rect);
    if (target.isEmpty())
        return false;
    return draw(target.canvas(), rect);
}

STDMETHODIMP FillColor::Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return preview(reinterpret_cast<HDC>(dc), toRect(rect)); });
}

STDMETHODIMP FillColor::GetBitmap(SkinRect rect, hyper* result) noexcept
{
    return morvane::filling(result, [&](hyper& bitmap) {
        DibSurface surface(toRect(rect).size());
        if (surface.isEmpty())
            return S_FALSE;
        draw(surface.canvas(), Rect::at({}, surface.size()));
        bitmap = reinterpret_cast<hyper>(surface.detachBitmap());
        return S_OK;
    });
}

STDMETHODIMP FillColor::RenderDraw(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& drawn) {
        if (!dc)
            return E_POINTER;
        const auto ours = fromInterface(dc);
        if (!ours || !ours->hasTarget())
            return S_FALSE;
        drawn = morvane::toVariantBool(draw(ours->canvas(), toRect(rect)));
        return S_OK;
    });
}

void FillColor::readConfig(const ConfigNode& node)
{
    readColour(node, L"clrStart", m_start);
    readColour(node, L"clrEnd", m_end);
    readNumber(node, L"GradientIrotation", m_rotation);
    changed();
}

void FillColor::writeConfig(ConfigNode& node) const
{
    writeColour(node, L"clrStart", m_start);
    writeColour(node, L"clrEnd", m_end);
    writeNumber(node, L"GradientIrotation", m_rotation);
}

} // namespace ambrel
