// A colour, which also draws with itself.
#pragma once

#include "ambrel/properties/property.h"

namespace ambrel {

class ColorPropertyObject final : public Property<ColorPropertyObject, IColorProp, IColorProp> {
public:
    using Property::Property;

    STDMETHODIMP GetValue(OLE_COLOR* result) noexcept override;
    STDMETHODIMP SetValue(OLE_COLOR color) noexcept override;
    /// Fills the rectangle on a device context.
    STDMETHODIMP Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) noexcept override;
    /// The lines of a dial: each from the arc towards its centre, which is the rectangle's centre.
    STDMETHODIMP DrawArcTickLine(IVexRenderDC* dc, SkinRect rect, float radius, float startAngle, float endAngle,
                                 float tickAngle, float lineLength, float lineWidth, unsigned long color,
                                 float rotation, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawArc(IVexRenderDC* dc, SkinRect rect, float radius, float startAngle, float endAngle,
                         float rotation, int penSize, OLE_COLOR color, VARIANT_BOOL* result) noexcept override;
    /// The numbers of a dial: `least`, then `step` more at each tick, centred inside the ticks of the given length.
    /// Without half tags only every other tick has one.
    STDMETHODIMP DrawArcTickString(IVexRenderDC* dc, SkinRect rect, float radius, float startAngle, float endAngle,
                                   float tickAngle, float lineLength, float least, float step, hyper font,
                                   long showsHalfTags, OLE_COLOR color, float rotation,
                                   VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP DrawLine(IVexRenderDC* dc, int x1, int y1, int x2, int y2, int penSize, OLE_COLOR color,
                          VARIANT_BOOL* result) noexcept override;

    HRESULT toVariant(VARIANT& result) noexcept;
    HRESULT fromVariant(const VARIANT& value, Notify notify);
    std::wstring toText();
    TextResult fromText(std::wstring_view text, const ResourceResolver&, Notify notify);
    void copyValue(ColorPropertyObject& source) noexcept { m_color = source.m_color; }

private:
    OLE_COLOR m_color = 0;
};

} // namespace ambrel
