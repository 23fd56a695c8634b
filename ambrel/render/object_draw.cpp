#include "ambrel/render/object_draw.h"

#include "ambrel/pixels/stretch.h"
#include "ambrel/render/bitmaps.h"
#include "ambrel/render/picture_decoder.h"
#include "host/geometry.h"

#include <algorithm>

namespace ambrel {

using morvane::returning;
using morvane::toRect;

namespace {

Rect rectOf(ISkinObjResBase* object)
{
    morvane::ComPtr<IVexRect> rect;
    SkinRect values{};
    if (!object || FAILED(object->GetRect(rect.put())) || !rect || FAILED(rect->GetRectStruct(&values)))
        return {};
    return toRect(values);
}

} // namespace

void* ObjectDraw::findInterface(REFIID iid) noexcept
{
    const bool isOurs = iid == IID_IDispatch || iid == morvane::iidOf<IVexObjectDraw>();
    return isOurs ? static_cast<IVexObjectDraw*>(this) : nullptr;
}

STDMETHODIMP ObjectDraw::BeginDraw(hyper dc, ISkinObjResBase* object, VARIANT_BOOL, VARIANT_BOOL memoryDc) noexcept
{
    return morvane::guarded([&] {
        m_layer.reset();
        m_rect = rectOf(object);
        if (memoryDc != VARIANT_FALSE)
            m_rect = Rect::at({}, m_rect.size());
        m_opacity = 255;
        if (short opacity = 0; object && SUCCEEDED(object->GetOpacity(&opacity)))
            m_opacity = std::clamp<int>(opacity, 0, 255);
        m_dc = reinterpret_cast<HDC>(dc);
        return m_dc ? S_OK : E_INVALIDARG;
    });
}

STDMETHODIMP ObjectDraw::EndDraw() noexcept
{
    m_layer.reset();
    m_dc = nullptr;
    return S_OK;
}

HDC ObjectDraw::targetDc() noexcept
{
    if (m_dc)
        return m_dc;
    hyper dc = 0;
    if (m_renderDC)
        m_renderDC->GetDC(&dc);
    return reinterpret_cast<HDC>(dc);
}

STDMETHODIMP ObjectDraw::GetDC(VARIANT_BOOL blend, hyper* result) noexcept
{
    return morvane::filling(result, [&](hyper& dc) {
        if (blend == VARIANT_FALSE) {
            dc = reinterpret_cast<hyper>(targetDc());
        } else {
            if (!m_layer) {
                m_layer = std::make_unique<DibSurface>(m_rect.size());
                SetViewportOrgEx(m_layer->dc(), -m_rect.left, -m_rect.top, nullptr); // coordinates as on the other
            }
            dc = m_layer->isEmpty() ? 0 : reinterpret_cast<hyper>(m_layer->dc());
        }
        return dc != 0 ? S_OK : S_FALSE;
    });
}

STDMETHODIMP ObjectDraw::GetDrawRect(SkinRect* result) noexcept
{
    return returning(result, [&] { return morvane::toSkinRect(m_rect); });
}

bool ObjectDraw::paint(const Rect& target, ConstPixelView pixels)
{
    const BorrowedPixels borrowed(targetDc(), target);
    if (pixels.isEmpty() || borrowed.isEmpty())
        return false;
    Surface scaled(target.size());
    stretchImage(scaled.view(), pixels);
    blendImage(borrowed.canvas(), target.topLeft(), scaled.view());
    return true;
}

STDMETHODIMP ObjectDraw::PaintIcon(SkinRect target, hyper icon, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        const Surface pixels = surfaceOfIcon(reinterpret_cast<HICON>(icon));
        return paint(toRect(target), pixels.view());
    });
}

STDMETHODIMP ObjectDraw::PaintImageAll(hyper bitmap, VARIANT_BOOL, VARIANT_BOOL* result) noexcept
{
    return PaintImagePart(morvane::toSkinRect(m_rect), bitmap, result);
}

STDMETHODIMP ObjectDraw::PaintImagePart(SkinRect target, hyper bitmap, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        const Surface pixels = surfaceOfBitmap(reinterpret_cast<HBITMAP>(bitmap));
        return paint(toRect(target), pixels.view());
    });
}

STDMETHODIMP ObjectDraw::PaintPartImagePart(SkinRect target, SkinRect source, hyper bitmap,
                                            VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        const Surface pixels = surfaceOfBitmap(reinterpret_cast<HBITMAP>(bitmap));
        return paint(toRect(target), pixels.view().part(toRect(source)));
    });
}

STDMETHODIMP ObjectDraw::DrawText(IVexTextStyle* style, BSTR text, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& drawn) {
        if (!style)
            return E_POINTER;
        const auto dc = reinterpret_cast<hyper>(targetDc());
        return style->DrawText(dc, text, morvane::toSkinRect(m_rect), VARIANT_TRUE, -1, nullptr, &drawn);
    });
}

STDMETHODIMP ObjectDraw::Blend(VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        if (!m_layer || m_layer->isEmpty())
            return false;
        const BorrowedPixels borrowed(targetDc(), m_rect);
        if (borrowed.isEmpty())
            return false;
        const Canvas layer = m_layer->canvas();
        repairAlpha(layer);
        blendImage(borrowed.canvas(), m_rect.topLeft(), layer.pixels, m_opacity);
        return true;
    });
}

STDMETHODIMP ObjectDraw::GetBmpBits(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(m_layer ? m_layer->pixels().data : nullptr); });
}

STDMETHODIMP ObjectDraw::SaveBitmap(BSTR path, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] {
        const BorrowedPixels current(targetDc(), m_rect);
        if (current.isEmpty())
            return false;
        const Canvas canvas = current.canvas();
        makeOpaque(canvas, canvas.clip);
        const auto bytes = encodePng(canvas.pixels);
        return !bytes.empty() && writeFile(std::wstring(morvane::viewOf(path)), bytes);
    });
}

STDMETHODIMP ObjectDraw::GetRenderDC(IVexRenderDC** result) noexcept
{
    return returning(result, [&] { return m_renderDC; });
}

STDMETHODIMP ObjectDraw::SetRenderDC(IVexRenderDC* dc) noexcept
{
    m_renderDC = morvane::ComPtr(dc);
    return S_OK;
}

} // namespace ambrel
