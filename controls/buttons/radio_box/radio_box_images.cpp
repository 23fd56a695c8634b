// The radio box's pictures: per state and value, from files and from bitmaps.
#include "controls/buttons/radio_box/radio_box.h"

#include "frame/parts/property_access.h"

namespace morvane {

std::optional<std::size_t> CRadioBox::lookIndex(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked)
{
    const std::int64_t index = std::int64_t{state} + (checked != VARIANT_FALSE ? kRadioStateCount : 0);
    if (state < 0 || index >= 2 * kRadioStateCount)
        return std::nullopt;
    return static_cast<std::size_t>(index);
}

CRadioBox::Look* CRadioBox::lookAt(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked)
{
    const auto index = lookIndex(state, checked);
    return index ? &m_properties.looks[*index] : nullptr;
}

STDMETHODIMP CRadioBox::SetBackImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase* section,
                                     VARIANT_BOOL* result) noexcept
{
    return storeIn(lookAt(state, checked), &Look::back, section, result);
}

STDMETHODIMP CRadioBox::GetBackImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase** result) noexcept
{
    return fetchFrom(lookAt(state, checked), &Look::back, result);
}

STDMETHODIMP CRadioBox::SetBackColor(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, OLE_COLOR color,
                                     VARIANT_BOOL* result) noexcept
{
    return storeIn(lookAt(state, checked), &Look::color, color, result);
}

STDMETHODIMP CRadioBox::GetBackColor(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, OLE_COLOR* result) noexcept
{
    return fetchFrom(lookAt(state, checked), &Look::color, result);
}

STDMETHODIMP CRadioBox::SetBoxImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase* section,
                                    VARIANT_BOOL* result) noexcept
{
    return storeIn(lookAt(state, checked), &Look::box, section, result);
}

STDMETHODIMP CRadioBox::GetBoxImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase** result) noexcept
{
    return fetchFrom(lookAt(state, checked), &Look::box, result);
}

STDMETHODIMP CRadioBox::SetGraphicsImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase* section,
                                         VARIANT_BOOL* result) noexcept
{
    return storeIn(lookAt(state, checked), &Look::graphics, section, result);
}

STDMETHODIMP CRadioBox::GetGraphicsImage(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexImageBase** result) noexcept
{
    return fetchFrom(lookAt(state, checked), &Look::graphics, result);
}

STDMETHODIMP CRadioBox::SetTextStyle(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexTextStyle* style,
                                     VARIANT_BOOL* result) noexcept
{
    return storeIn(lookAt(state, checked), &Look::textStyle, style, result);
}

STDMETHODIMP CRadioBox::GetTextStyle(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, IVexTextStyle** result) noexcept
{
    return fetchFrom(lookAt(state, checked), &Look::textStyle, result);
}

STDMETHODIMP CRadioBox::SetBackDrawColor(VARIANT_BOOL drawColor) noexcept
{
    return store(m_properties.drawsColor, drawColor);
}
STDMETHODIMP CRadioBox::GetBackDrawColor(VARIANT_BOOL* result) noexcept
{
    return fetch(m_properties.drawsColor, result);
}

STDMETHODIMP CRadioBox::SetGraphicsBmp(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, std::int64_t bitmap,
                                       VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) -> HRESULT {
        const auto index = lookIndex(state, checked);
        if (!index)
            return E_INVALIDARG;
        GraphicBitmap& place = m_bitmaps[*index];
        place.image.destroy(host());
        place.handle = bitmap; // the application's; it must outlive its use here
        done = VARIANT_TRUE;
        return S_OK;
    });
}

STDMETHODIMP CRadioBox::GetGraphicsBmp(VEX_RADIOBOXSTATE state, VARIANT_BOOL checked, std::int64_t* result) noexcept
{
    const auto index = lookIndex(state, checked);
    return index ? returning(result, [&] { return m_bitmaps[*index].handle; }) : refused(result);
}

STDMETHODIMP CRadioBox::SetUpDownMode(VARIANT_BOOL stacked, VARIANT_BOOL redrawNow) noexcept
{
    return storeThen(m_properties.graphic.isStacked, stacked, [&] { redrawIf(redrawNow); });
}

STDMETHODIMP CRadioBox::SetGraphicOffset(long x, long y, VARIANT_BOOL redrawNow) noexcept
{
    return guarded([&] {
        m_properties.graphic.x.set(static_cast<int>(x));
        m_properties.graphic.y.set(static_cast<int>(y));
        redrawIf(redrawNow);
    });
}

STDMETHODIMP CRadioBox::GetGraphicOffset(long* x, long* y) noexcept
{
    return fetch(m_properties.graphic.x, m_properties.graphic.y, x, y);
}

STDMETHODIMP CRadioBox::SetGraphicSize(long width, long height, VARIANT_BOOL redrawNow, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) {
        m_properties.graphicWidth.set(static_cast<int>(width));
        m_properties.graphicHeight.set(static_cast<int>(height));
        redrawIf(redrawNow);
        done = VARIANT_TRUE;
        return S_OK;
    });
}

STDMETHODIMP CRadioBox::GetGraphicSize(long* width, long* height) noexcept
{
    return fetch(m_properties.graphicWidth, m_properties.graphicHeight, width, height);
}

STDMETHODIMP CRadioBox::SetChildWndImage(BSTR path, short rightSpace, short offsetY) noexcept
{
    return guarded([&] {
        m_child.rightSpace = rightSpace;
        m_child.offsetY = offsetY;
        m_child.isSet = true;
        m_child.hasMouse = false;
        m_child.picture.reset();
        m_child.picture = loadPicture(path);
        if (!m_child.picture)
            return S_FALSE;
        redraw();
        return S_OK;
    });
}

STDMETHODIMP CRadioBox::SetBlinkImage(BSTR path) noexcept
{
    return guarded([&] {
        m_blinkPicture.reset();
        m_blinkPicture = loadPicture(path);
        return m_blinkPicture ? S_OK : S_FALSE;
    });
}

} // namespace morvane
