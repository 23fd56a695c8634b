#include "ambrel/properties/color_property.h"

#include "ambrel/properties/arc_geometry.h"
#include "ambrel/properties/simple_properties.h"
#include "ambrel/properties/value_text.h"

#include <cmath>
#include <limits>

namespace ambrel {

using morvane::Bstr;
using morvane::filling;
using morvane::returning;

namespace {

COLORREF deviceColor(OLE_COLOR color) noexcept
{
    COLORREF translated = 0;
    return SUCCEEDED(OleTranslateColor(color, nullptr, &translated)) ? translated : color & 0x00FFFFFF;
}

constexpr bool fitsShort(int value) noexcept
{
    return value >= std::numeric_limits<short>::min() && value <= std::numeric_limits<short>::max();
}

/// Draws with one pen on a render context, whose coordinates have 16 bits. False when something was not drawn.
class Pen {
public:
    Pen(IVexRenderDC& dc, int size, OLE_COLOR color) noexcept : m_dc(dc), m_size(size), m_color(color) {}

    bool line(ArcPoint from, ArcPoint to) const noexcept
    {
        if (!fitsShort(from.x) || !fitsShort(from.y) || !fitsShort(to.x) || !fitsShort(to.y) || m_size <= 0 ||
            !fitsShort(m_size))
            return false;
        constexpr short kOpaque = 255;
        VARIANT_BOOL drawn = VARIANT_FALSE;
        const HRESULT status =
            m_dc.DrawLine(static_cast<short>(from.x), static_cast<short>(from.y), static_cast<short>(to.x),
                          static_cast<short>(to.y), static_cast<short>(m_size), kOpaque, m_color, &drawn);
        return SUCCEEDED(status) && drawn != VARIANT_FALSE;
    }

private:
    IVexRenderDC& m_dc;
    int m_size;
    OLE_COLOR m_color;
};

Arc arcIn(const SkinRect& rect, float radius, float startAngle, float endAngle, float rotation) noexcept
{
    // Halves apart, so that extreme rectangles do not overflow.
    return {
        rect.left / 2.0 + rect.right / 2.0, rect.top / 2.0 + rect.bottom / 2.0, radius, startAngle, endAngle, rotation};
}

} // namespace

STDMETHODIMP ColorPropertyObject::GetValue(OLE_COLOR* result) noexcept
{
    return returning(result, [&] { return m_color; });
}

STDMETHODIMP ColorPropertyObject::SetValue(OLE_COLOR color) noexcept
{
    assign(m_color, color);
    return S_OK;
}

STDMETHODIMP ColorPropertyObject::Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        const HDC target = reinterpret_cast<HDC>(dc);
        const COLORREF former = SetDCBrushColor(target, deviceColor(m_color));
        if (former == CLR_INVALID)
            return false;
        const RECT area = {rect.left, rect.top, rect.right, rect.bottom};
        const bool drawn = FillRect(target, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH))) != 0;
        SetDCBrushColor(target, former);
        return drawn;
    });
}

STDMETHODIMP ColorPropertyObject::RenderDraw(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return filling(result,
                   [&](VARIANT_BOOL& drawn) { return dc ? dc->FillSolidColor(&rect, m_color, &drawn) : E_POINTER; });
}

STDMETHODIMP ColorPropertyObject::DrawLine(IVexRenderDC* dc, int x1, int y1, int x2, int y2, int penSize,
                                           OLE_COLOR color, VARIANT_BOOL* result) noexcept
{
    if (!dc)
        return E_POINTER;
    return returning(result, [&] { return Pen(*dc, penSize, color).line({x1, y1}, {x2, y2}); });
}

STDMETHODIMP ColorPropertyObject::DrawArc(IVexRenderDC* dc, SkinRect rect, float radius, float startAngle,
                                          float endAngle, float rotation, int penSize, OLE_COLOR color,
                                          VARIANT_BOOL* result) noexcept
{
    if (!dc)
        return E_POINTER;
    return returning(result, [&] {
        const auto points = arcPoints(arcIn(rect, radius, startAngle, endAngle, rotation));
        const Pen pen(*dc, penSize, color);
        bool drawn = !points.empty();
        for (std::size_t i = 1; i < points.size(); ++i)
            drawn &= pen.line(points[i - 1], points[i]);
        return drawn;
    });
}

STDMETHODIMP ColorPropertyObject::DrawArcTickLine(IVexRenderDC* dc, SkinRect rect, float radius, float startAngle,
                                                  float endAngle, float tickAngle, float lineLength, float lineWidth,
                                                  unsigned long color, float rotation, VARIANT_BOOL* result) noexcept
{
    if (!dc)
        return E_POINTER;
    return returning(result, [&] {
        const auto ticks = arcTicks(arcIn(rect, radius, startAngle, endAngle, rotation), tickAngle, lineLength);
        const bool isWidth = lineWidth > 0 && lineWidth < 1000;
        const Pen pen(*dc, isWidth && lineWidth > 1 ? static_cast<int>(lineWidth) : 1, static_cast<OLE_COLOR>(color));
        bool drawn = isWidth && !ticks.empty();
        for (const ArcTick& tick : ticks)
            drawn = drawn && pen.line(tick.outer, tick.inner);
        return drawn;
    });
}

STDMETHODIMP ColorPropertyObject::DrawArcTickString(IVexRenderDC* dc, SkinRect rect, float radius, float startAngle,
                                                    float endAngle, float tickAngle, float lineLength, float least,
                                                    float step, hyper font, long showsHalfTags, OLE_COLOR color,
                                                    float rotation, VARIANT_BOOL* result) noexcept
{
    if (!dc)
        return E_POINTER;
    return returning(result, [&] {
        constexpr int kHalfWidth = 24; // room for a number, centred
        constexpr int kHalfHeight = 8;
        const auto ticks =
            arcTicks(arcIn(rect, radius, startAngle, endAngle, rotation), tickAngle, lineLength + kHalfHeight);
        bool drawn = !ticks.empty();
        for (std::size_t i = 0; i < ticks.size(); i += showsHalfTags ? 1 : 2) {
            const ArcPoint centre = ticks[i].inner;
            SkinRect box = {centre.x - kHalfWidth, centre.y - kHalfHeight, centre.x + kHalfWidth,
                            centre.y + kHalfHeight};
            const float number = least + step * static_cast<float>(i);
            if (!std::isfinite(number))
                return false;
            const Bstr text(formatRounded(number));
            VARIANT_BOOL textDrawn = VARIANT_FALSE;
            drawn &= SUCCEEDED(dc->DrawText(text.get(), &box, font, color, DT_CENTER | DT_VCENTER | DT_SINGLELINE,
                                            &textDrawn)) &&
                     textDrawn != VARIANT_FALSE;
        }
        return drawn;
    });
}

HRESULT ColorPropertyObject::toVariant(VARIANT& result) noexcept
{
    result.vt = VT_UI4;
    result.ulVal = m_color;
    return S_OK;
}

HRESULT ColorPropertyObject::fromVariant(const VARIANT& value, Notify notify)
{
    if (value.vt == VT_BSTR) {
        const auto color = parseColor(morvane::viewOf(value.bstrVal));
        if (!color)
            return DISP_E_TYPEMISMATCH;
        assign(m_color, static_cast<OLE_COLOR>(*color), notify);
        return S_OK;
    }
    // Scripts hand colours over as signed numbers, and system colours do not fit those when given as unsigned ones.
    const ConvertedVariant whole(value, VT_I8);
    if (FAILED(whole.status()))
        return whole.status();
    const LONGLONG number = whole.value().llVal;
    if (number < std::numeric_limits<LONG>::min() || number > std::numeric_limits<ULONG>::max())
        return DISP_E_OVERFLOW;
    assign(m_color, static_cast<OLE_COLOR>(number), notify);
    return S_OK;
}

std::wstring ColorPropertyObject::toText()
{
    return formatColor(static_cast<std::uint32_t>(m_color));
}

TextResult ColorPropertyObject::fromText(std::wstring_view text, const ResourceResolver&, Notify notify)
{
    const auto color = parseColor(text);
    if (!color)
        return TextResult::NotThisType;
    assign(m_color, static_cast<OLE_COLOR>(*color), notify);
    return TextResult::Taken;
}

} // namespace ambrel
