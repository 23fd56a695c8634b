// What the base object draws itself: children, the focus mark, and the application's own pictures.
#include "ambrel/objects/base_object.h"

#include "ambrel/objects/display_list.h"
#include "ambrel/objects/drawing.h"

namespace ambrel {

STDMETHODIMP BaseObject::DirectRedraw(SkinRect* rect) noexcept
{
    return guarded([&] {
        const Rect part = rect ? morvane::toRect(*rect) : Rect{};
        redraw(rect ? &part : nullptr);
    });
}

STDMETHODIMP BaseObject::DrawObject(IVexObjectDraw*, SkinRect, VARIANT_BOOL* result) noexcept
{
    return answering(result, [] { return false; }); // the control's business
}

STDMETHODIMP BaseObject::RenderDrawObject(IVexRenderDC*, SkinRect, VARIANT_BOOL* result) noexcept
{
    return answering(result, [] { return false; });
}

STDMETHODIMP BaseObject::RenderDrawChildren(IVexRenderDC* dc, SkinRect rect) noexcept
{
    if (!dc)
        return E_POINTER;
    return guarded([&] {
        const ComPtr<IVexControlBase> hold(control());
        drawRetained(*dc);
        drawChildren(m_node, *dc, morvane::toRect(rect));
    });
}

STDMETHODIMP BaseObject::RenderDrawFocus(IVexRenderDC* dc) noexcept
{
    if (!dc)
        return E_POINTER;
    RootServices* const window = services();
    if (!window || !window->showsFocusMarks() || !m_node.has(NodeFlag::Focused) || !m_node.has(NodeFlag::DrawsFocus))
        return S_FALSE;
    return guarded([&] {
        if (fromInterface(dc))
            m_node.set(NodeFlag::AsksForMark, true); // it lies around the object, once that is drawn
        else
            drawFocusMark(*dc, m_node.rect());
    });
}

STDMETHODIMP BaseObject::DrawChildren(hyper dc, SkinRect rect) noexcept
{
    // By the render path, which every control has.
    VARIANT_BOOL drawn = VARIANT_FALSE;
    return onDeviceContext(dc, &drawn, [&](HDC target) {
        const ComPtr<IVexControlBase> hold(control());
        return drawChildrenOnto(target, m_node, morvane::toRect(rect));
    });
}

STDMETHODIMP BaseObject::DrawPreview(hyper dc, SkinRect* rect) noexcept
{
    return guarded([&] { tell(VEXSM_DRAWPREVIEW, dc, reinterpret_cast<hyper>(rect)); });
}

STDMETHODIMP BaseObject::DestroyBmpPerPixel() noexcept
{
    return guarded([&] { return tell(VEXSM_DESTROYBMPPERPIXEL) ? S_OK : S_FALSE; });
}

STDMETHODIMP BaseObject::GetVexRenderDC(IVexRenderDC** result) noexcept
{
    return finding(result, [&] {
        RootServices* const window = services();
        return ComPtr<IVexRenderDC>(window ? window->renderContext() : nullptr);
    });
}

STDMETHODIMP BaseObject::SetHaveCanvas(VARIANT_BOOL has, VEX_HAVECANVASFLAGES flags, VARIANT_BOOL* result) noexcept
{
    return morvane::filling(result, [&](VARIANT_BOOL& changed) {
        if (flags < VEX_HCF_NONE || flags > VEX_HCF_ALWAYS)
            return E_INVALIDARG;
        const bool wanted = has != VARIANT_FALSE;
        const Belongings none;
        const Belongings& known = m_belongings ? *m_belongings : none;
        if (known.hasCanvas == wanted && known.canvasFlags == flags)
            return S_FALSE;
        belongings().hasCanvas = wanted;
        belongings().canvasFlags = flags;
        changed = VARIANT_TRUE;
        return S_OK;
    });
}

STDMETHODIMP BaseObject::IsHaveCanvas(VEX_HAVECANVASFLAGES* flags, VARIANT_BOOL* result) noexcept
{
    if (!flags)
        return E_POINTER;
    *flags = m_belongings ? m_belongings->canvasFlags : VEX_HCF_NONE;
    return returning(result, [&] { return m_belongings && m_belongings->hasCanvas; });
}

// --- the application's own pictures

void BaseObject::DisplayList::Fill::draw(IVexRenderDC& dc) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    fill->RenderDraw(&dc, rect, &drawn);
}

void BaseObject::DisplayList::Section::draw(IVexRenderDC& dc) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    image->RenderDraw(&dc, rect, index, &drawn);
}

void BaseObject::DisplayList::Text::draw(IVexRenderDC& dc) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    style->RenderDrawText(&dc, text.get(), rect, VARIANT_TRUE, -1, nullptr, &drawn);
}

void BaseObject::DisplayList::Image::draw(IVexRenderDC& dc) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    image->Draw(&dc, rect, source, stretch, transparent, &drawn);
}

void BaseObject::DisplayList::Solid::draw(IVexRenderDC& dc) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    color->RenderDraw(&dc, rect, &drawn);
}

void BaseObject::DisplayList::draw(IVexRenderDC& dc) const
{
    // What is drawn may be foreign and add to the list: what comes later waits.
    const std::size_t present = m_items.size();
    for (std::size_t i = 0; i < present; ++i)
        std::visit([&](const auto& what) { what.draw(dc); }, m_items[i]);
}

void BaseObject::drawRetained(IVexRenderDC& dc)
{
    if (const auto list = m_displayList) // Reset may be called meanwhile
        list->draw(dc);
}

BaseObject::DisplayList& BaseObject::displayList()
{
    if (!m_displayList)
        m_displayList = std::make_shared<DisplayList>();
    return *m_displayList;
}

STDMETHODIMP BaseObject::AddFillColor(IFillColor* fill, SkinRect rect) noexcept
{
    if (!fill)
        return E_POINTER;
    return guarded([&] { displayList().add(DisplayList::Fill{ComPtr<IFillColor>(fill), rect}); });
}

STDMETHODIMP BaseObject::AddImageBase(IVexImageBase* image, SkinRect rect, short index) noexcept
{
    if (!image)
        return E_POINTER;
    return guarded([&] { displayList().add(DisplayList::Section{ComPtr<IVexImageBase>(image), rect, index}); });
}

STDMETHODIMP BaseObject::AddTextStyle(IVexTextStyle* style, SkinRect rect, BSTR text) noexcept
{
    if (!style)
        return E_POINTER;
    return guarded([&] {
        displayList().add(DisplayList::Text{ComPtr<IVexTextStyle>(style), rect, Bstr(morvane::viewOf(text))});
    });
}

STDMETHODIMP BaseObject::AddRenderImage(IVexRenderImage* image, SkinRect rect, SkinRect source, VARIANT_BOOL stretch,
                                        OLE_COLOR transparent) noexcept
{
    if (!image)
        return E_POINTER;
    return guarded([&] {
        displayList().add(DisplayList::Image{ComPtr<IVexRenderImage>(image), rect, source, stretch, transparent});
    });
}

STDMETHODIMP BaseObject::AddSolidColor(IColorProp* color, SkinRect rect) noexcept
{
    if (!color)
        return E_POINTER;
    return guarded([&] { displayList().add(DisplayList::Solid{ComPtr<IColorProp>(color), rect}); });
}

STDMETHODIMP BaseObject::Update() noexcept
{
    return guarded([&] { redraw(); });
}

STDMETHODIMP BaseObject::Reset() noexcept
{
    if (!m_displayList)
        return S_FALSE;
    return guarded([&] {
        m_displayList.reset();
        redraw();
    });
}

} // namespace ambrel
