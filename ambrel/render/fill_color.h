// Fills as shared resources.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/shared_resource.h"

namespace ambrel {

/// IFillColor: a linear gradient, or one colour when both ends are equal or one of them is none (0xFFFFFFFF). The
/// rotation is in degrees, 0 from left to right, 90 from top to bottom.
class FillColor : public SharedResource<IFillColor> {
public:
    static constexpr IID kImplementationIid = {
        0xB3D81C46, 0x08E5, 0x4F92, {0x9E, 0x60, 0x74, 0x2B, 0xA1, 0xD9, 0x53, 0xCF}};

    FillColor() : SharedResource(VEXOBJTYPE_GRADIENTCLR, L"GradientColor") {}
    void* findInterface(REFIID iid) noexcept;

    void setColours(OLE_COLOR start, OLE_COLOR end, long rotation) noexcept;
    /// False when there is no colour.
    bool draw(const Canvas& canvas, const Rect& rect) const;

    STDMETHODIMP get_clrStart(OLE_COLOR* result) noexcept override { return give(m_start, result); }
    STDMETHODIMP put_clrStart(OLE_COLOR value) noexcept override { return take(m_start, value); }
    STDMETHODIMP get_clrEnd(OLE_COLOR* result) noexcept override { return give(m_end, result); }
    STDMETHODIMP put_clrEnd(OLE_COLOR value) noexcept override { return take(m_end, value); }
    STDMETHODIMP get_nGradientIrotation(long* result) noexcept override { return give(m_rotation, result); }
    STDMETHODIMP put_nGradientIrotation(long value) noexcept override { return take(m_rotation, value); }
    STDMETHODIMP Draw(hyper dc, SkinRect rect, VARIANT_BOOL* result) noexcept override;
    STDMETHODIMP GetBitmap(SkinRect rect, hyper* result) noexcept override;
    STDMETHODIMP RenderDraw(IVexRenderDC* dc, SkinRect rect, VARIANT_BOOL* result) noexcept override;

protected:
    void readConfig(const ConfigNode& node) override;
    void writeConfig(ConfigNode& node) const override;
    bool preview(HDC dc, const Rect& rect) override;

private:
    OLE_COLOR m_start = 0x00FFFFFF;
    OLE_COLOR m_end = 0x00FFFFFF;
    long m_rotation = 0;
};

} // namespace ambrel
