#include "ambrel/render/layer_graphics.h"

#include "host/geometry.h"

namespace ambrel {

using morvane::returning;
using morvane::toRect;

void* LayerGraphics::findInterface(REFIID iid) noexcept
{
    const bool isOurs = iid == IID_IDispatch || iid == morvane::iidOf<ILayerGraphics>();
    return isOurs ? static_cast<ILayerGraphics*>(this) : nullptr;
}

bool LayerGraphics::cover(const Rect& rect)
{
    const auto isOdd = [](std::int64_t from, std::int64_t to) { return to <= from || to - from > Surface::kMaxSide; };
    if (isOdd(rect.left, rect.right) || isOdd(rect.top, rect.bottom))
        return false;
    auto surface = std::make_unique<DibSurface>(rect.size());
    if (surface->isEmpty())
        return false;
    m_surface = std::move(surface);
    m_rect = rect;
    m_info = bitmapInfoOf(rect.size());
    return true;
}

STDMETHODIMP LayerGraphics::Create(SkinRect rect, VARIANT_BOOL* result) noexcept
{
    return returning(result, [&] { return cover(toRect(rect)); });
}

STDMETHODIMP LayerGraphics::GetDC(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(m_surface ? m_surface->dc() : nullptr); });
}

STDMETHODIMP LayerGraphics::Destroy() noexcept
{
    m_surface.reset();
    m_rect = {};
    return S_OK;
}

STDMETHODIMP LayerGraphics::Clear(SkinRect rect) noexcept
{
    if (!m_surface)
        return S_FALSE;
    fillRect(m_surface->canvas(m_rect.topLeft()), toRect(rect), 0);
    return S_OK;
}

STDMETHODIMP LayerGraphics::GetRect(SkinRect* result) noexcept
{
    return returning(result, [&] { return morvane::toSkinRect(m_rect); });
}

STDMETHODIMP LayerGraphics::GetBits(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(m_surface ? m_surface->pixels().data : nullptr); });
}

STDMETHODIMP LayerGraphics::GetBitmap(hyper* result) noexcept
{
    return returning(result, [&] { return reinterpret_cast<hyper>(m_surface ? m_surface->bitmap() : nullptr); });
}

STDMETHODIMP LayerGraphics::GetOldBitmap(hyper* result) noexcept
{
    // What was in the device context before is not for callers to select; the layer puts it back by itself.
    return returning(result, [] { return 0; });
}

STDMETHODIMP LayerGraphics::GetBmpInfo(hyper* result) noexcept
{
    return returning(result, [&] { return m_surface ? reinterpret_cast<hyper>(&m_info) : 0; });
}

STDMETHODIMP LayerGraphics::SetLayerBmp(hyper pointer) noexcept
{
    m_layerPointer = pointer;
    return S_OK;
}

STDMETHODIMP LayerGraphics::GetLayerBmp(hyper* result) noexcept
{
    return returning(result, [&] { return m_layerPointer; });
}

} // namespace ambrel
