#include "controls/buttons/form_object/form_object.h"

#include "frame/parts/dc_drawing.h"
#include "frame/parts/property_access.h"

namespace morvane {

void FormObjectProperties::declare(PropertyTable& table)
{
    const PropertyGroup back = table.group(L"Back");
    back.style(drawsColor, L"DrawColor");
    back.style(image, L"Image");
    back.style(color, L"Color");
    color.fill(); // asked for once, so that a host that makes fills on demand has it from the start
    table.group(L"Misc").style(takesMouseMoves, L"DisposeMouse");
}

const ControlInfo& CUIFormObj::info() const noexcept
{
    static const ControlInfo kInfo{L"UIForm", 2084, 2083, 0, iidOf<_IUIFormObjEvents>()};
    return kInfo;
}

void CUIFormObj::letGo(const HostCache& former)
{
    m_backImage.destroy(former);
}

// Notifications -------------------------------------------------------------------------------------------------------

Handled CUIFormObj::onFinalCreate()
{
    Control::onFinalCreate();
    if (IVexControlBase* const inner = innerBase())
        inner->SetDragabledProp(VARIANT_TRUE); // in the designer
    return Handled::Yes;
}

Handled CUIFormObj::onMouseEnter(const PointerNotice& notice)
{
    raise({VEXSM_MOUSEMOVE, notice.point}); // entering a form is just a move for those who listen
    return Handled::No;
}

Handled CUIFormObj::onLeftButtonUp(const PointerNotice& notice)
{
    return handledIf(raise(notice));
}

Handled CUIFormObj::onIsDragEnabled(VARIANT_BOOL& enabled)
{
    enabled = VARIANT_TRUE;
    if (IVexControlBase* const inner = innerBase())
        inner->IsDragabledProp(&enabled);
    return Handled::Yes;
}

Handled CUIFormObj::onGetTabInfo(VARIANT_BOOL& takesTab, VARIANT_BOOL& drawsFocus)
{
    takesTab = VARIANT_FALSE;
    drawsFocus = VARIANT_FALSE;
    return Handled::Yes;
}

// Background
// ------------------------------------------------------------------------------------------------------------

STDMETHODIMP CUIFormObj::SetDrawColor(VARIANT_BOOL drawColor) noexcept
{
    return store(m_properties.drawsColor, drawColor);
}
STDMETHODIMP CUIFormObj::GetDrawColor(VARIANT_BOOL* result) noexcept
{
    return fetch(m_properties.drawsColor, result);
}
STDMETHODIMP CUIFormObj::SetBackImageSec(IVexImageBase* section) noexcept
{
    return store(m_properties.image, section);
}
STDMETHODIMP CUIFormObj::GetBackImageSec(IVexImageBase** result) noexcept
{
    return fetch(m_properties.image, result);
}

STDMETHODIMP CUIFormObj::SetBackColor(IFillColor* fill) noexcept
{
    return guarded([&] { m_properties.color.set(fill); });
}

STDMETHODIMP CUIFormObj::GetBackColor(IFillColor** result) noexcept
{
    return returning(result, [&] { return m_properties.color.fill(); });
}

// Bitmap
// ----------------------------------------------------------------------------------------------------------------

STDMETHODIMP CUIFormObj::SetBackBitmapPath(BSTR path, VARIANT_BOOL redrawNow, VARIANT_BOOL* result) noexcept
{
    // The result stays false even when the picture was loaded: clients learn of it by IsShowBitmap.
    return filling(result, [&](VARIANT_BOOL&) {
        if (!path)
            return S_FALSE;
        m_bitmapPath = std::wstring(viewOf(path));
        m_backImage.makeFromFile(host(), path);
        m_showsBitmap = VARIANT_TRUE;
        if (redrawNow != VARIANT_FALSE)
            redrawOwnRect();
        return S_OK;
    });
}

STDMETHODIMP CUIFormObj::GetBackBitmapPath(BSTR* result) noexcept
{
    if (!result)
        return E_POINTER;
    // Without a path the place stays as it is.
    return guarded([&] {
        if (m_bitmapPath)
            *result = Bstr(*m_bitmapPath).detach();
    });
}

STDMETHODIMP CUIFormObj::SetShowBitmap(VARIANT_BOOL show) noexcept
{
    m_showsBitmap = show;
    return S_OK;
}

STDMETHODIMP CUIFormObj::IsShowBitmap(VARIANT_BOOL* result) noexcept
{
    if (!result)
        return E_POINTER;
    *result = m_showsBitmap;
    return S_OK;
}

STDMETHODIMP CUIFormObj::SetBackBitmap(std::int64_t bitmap, IVexRenderImage** result) noexcept
{
    return filling(result, [&](IVexRenderImage*& image) {
        m_backImage.makeFromHandle(host(), bitmap, VEX_PT_BMP);
        m_showsBitmap = VARIANT_TRUE;
        redrawOwnRect();
        image = m_backImage.get(); // lent: compiled clients do not release it
        return S_OK;
    });
}

STDMETHODIMP CUIFormObj::GetBackBitmap(std::int64_t* result) noexcept
{
    return filling(result, [&](std::int64_t& image) {
        image = reinterpret_cast<std::int64_t>(m_backImage.get());
        return m_backImage ? S_OK : S_FALSE;
    });
}

STDMETHODIMP CUIFormObj::DeleteBackBitmap() noexcept
{
    return guarded([&] {
        m_backImage.destroy(host());
        m_showsBitmap = VARIANT_FALSE;
        redraw();
    });
}

// Drawing
// ---------------------------------------------------------------------------------------------------------------

void CUIFormObj::render(IVexRenderDC& dc)
{
    const Rect control = ownRect();
    if (m_showsBitmap != VARIANT_FALSE && m_backImage)
        m_backImage.drawAll(dc, control);
    else if (m_properties.drawsColor.isSet())
        m_properties.color.draw(dc, control);
    else
        m_properties.image.draw(dc, control);
    drawFocusMark(dc);
}

/// The bitmap is an image of the render device and cannot be drawn here: image or colour stand in for it.
HRESULT CUIFormObj::drawOnDc(IVexObjectDraw* objectDraw, VARIANT_BOOL* result)
{
    if (!objectDraw || !result)
        return E_POINTER;
    *result = VARIANT_FALSE;
    const DcPainter painter(*objectDraw);
    const Rect control = ownRect();
    if (m_properties.drawsColor.isSet()) {
        if (const ComPtr<IFillColor> fill = m_properties.color.fill())
            painter.drawFill(*fill, control);
    } else if (const ComPtr<IVexImageBase> image = m_properties.image.section()) {
        painter.drawSection(*image, control);
    }
    *result = VARIANT_TRUE;
    return S_OK;
}

} // namespace morvane
