#include "ambrel/render/render_image.h"

#include "ambrel/pixels/colour_change.h"
#include "ambrel/pixels/stretch.h"
#include "ambrel/render/colours.h"
#include "ambrel/render/render_dc.h"
#include "frame/com/instance.h"
#include "host/geometry.h"

namespace ambrel {

using morvane::returning;
using morvane::toRect;

morvane::ComPtr<RenderImage> RenderImage::make(Surface pixels, VEX_PICTURE_TYPE type)
{
    auto image = morvane::Instance<RenderImage>::make();
    image->m_coverage = coverageOf(pixels.view());
    image->m_pixels = std::move(pixels);
    image->m_type = type;
    return image;
}

void* RenderImage::findInterface(REFIID iid) noexcept
{
    const bool isOurs = iid == IID_IDispatch || iid == morvane::iidOf<IVexRenderImage>() || iid == kImplementationIid;
    return isOurs ? static_cast<IVexRenderImage*>(this) : nullptr;
}

bool RenderImage::draw(const Canvas& canvas, const Rect& target, const Rect& source, bool stretch,
                       OLE_COLOR transparent)
{
    const Rect from = source.intersection(m_pixels.view().bounds());
    if (from.isEmpty() || target.isEmpty())
        return false;
    const Canvas inside = canvas.clippedTo(target);
    if (inside.visible(target).isEmpty())
        return true;
    const Size size = stretch ? target.size() : from.size();
    const Point at = stretch ? target.topLeft() : target.topLeft() + (from.topLeft() - source.topLeft());
    if (size == from.size() && transparent == 0) {
        drawImage(inside, at, m_pixels.view().part(from), m_coverage, 255);
        return true;
    }
    const auto keyed = [&] {
        Surface part(from.size());
        copyImage({part.view(), {}, part.view().bounds()}, {}, m_pixels.view().part(from));
        if (transparent != 0)
            applyColourKey(part.view(), toPlainColour(transparent));
        return part;
    };
    if (FormCache::isTooLarge(size)) {
        const Rect shown = inside.visible(target);
        const Surface part = keyed();
        Surface scaled(shown.size());
        stretchImagePart(scaled.view(), part.view(), size, shown.topLeft() - at);
        blendImage(inside, shown.topLeft(), scaled.view());
        return true;
    }
    const FormCache::Form& form = m_forms.get({size, from, 0, 100, transparent}, [&] {
        Surface scaled(size);
        const Surface part = keyed();
        stretchImage(scaled.view(), part.view());
        return scaled;
    });
    drawImage(inside, at, form.pixels.view(), form.coverage, 255);
    return true;
}

STDMETHODIMP RenderImage::GetWidth(long* result) noexcept
{
    return returning(result, [&] { return size().width; });
}

STDMETHODIMP RenderImage::GetHeight(long* result) noexcept
{
    return returning(result, [&] { return size().height; });
}

STDMETHODIMP RenderImage::GetFormatType(VEX_PICTURE_TYPE* result) noexcept
{
    return returning(result, [&] { return m_type; });
}

STDMETHODIMP RenderImage::GetBits(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(m_pixels.view().data); });
}

STDMETHODIMP RenderImage::GetColorDepth(short* result) noexcept
{
    return returning(result, [] { return 32; });
}

STDMETHODIMP RenderImage::HasAlphaChannel(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return m_coverage != Coverage::Opaque; });
}

STDMETHODIMP RenderImage::GetHandle(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(this); });
}

STDMETHODIMP RenderImage::GetRenderType(VEX_RENDERENGINE_TYPE* result) noexcept
{
    return returning(result, [] { return VEX_RENDERENGINE_GDI; });
}

HRESULT RenderImage::drawOn(IVexRenderDC* dc, const Rect& target, const Rect& source, VARIANT_BOOL stretch,
                            OLE_COLOR transparent, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& drawn) {
        if (!dc)
            return E_POINTER;
        const auto ours = fromInterface(dc);
        if (!ours || !ours->hasTarget())
            return S_FALSE;
        drawn = morvane::toVariantBool(draw(ours->canvas(), target, source, stretch != VARIANT_FALSE, transparent));
        return S_OK;
    });
}

STDMETHODIMP RenderImage::Draw(IVexRenderDC* dc, SkinRect target, SkinRect source, VARIANT_BOOL stretch,
                               OLE_COLOR transparent, VARIANT_BOOL* result) noexcept
{
    return drawOn(dc, toRect(target), toRect(source), stretch, transparent, result);
}

STDMETHODIMP RenderImage::SetRenderImagePtr(hyper pointer) noexcept
{
    // Our images cannot become another one; setting what is there already changes nothing.
    return pointer == reinterpret_cast<hyper>(this) ? S_OK : E_INVALIDARG;
}

STDMETHODIMP RenderImage::GetRenderImagePtr(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(this); });
}

STDMETHODIMP RenderImage::DrawAll(IVexRenderDC* dc, SkinRect target, VARIANT_BOOL stretch, OLE_COLOR transparent,
                                  VARIANT_BOOL* result) noexcept
{
    return drawOn(dc, toRect(target), m_pixels.view().bounds(), stretch, transparent, result);
}

} // namespace ambrel
