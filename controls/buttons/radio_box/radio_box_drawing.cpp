// The radio box's looks, from value and state to drawing calls, on render devices and on device contexts.
#include "controls/buttons/radio_box/radio_box.h"

#include "frame/parts/box_layout.h"
#include "frame/parts/dc_drawing.h"

namespace morvane {

/// A pointer that left without the framework's word leaves the state behind.
void CRadioBox::settleState()
{
    if (!isMouseOver())
        enterState(RadioState::Normal);
}

Size CRadioBox::boxSize()
{
    return currentLook().box.sectionRect().size();
}

Rect CRadioBox::textRect(const Rect& control)
{
    return m_properties.graphic.isStacked.isSet() ? control : textBesideBox(control, boxSize().width, isMirrored());
}

Rect CRadioBox::graphicRect(const Rect& control, Size natural) const
{
    const Size wanted{m_properties.graphicWidth.value(), m_properties.graphicHeight.value()};
    return placeGraphic(m_properties.graphic.placement(), control, wanted.isEmpty() ? natural : wanted);
}

Rect CRadioBox::childImageRect(const Rect& control) const
{
    const Size size = pictureSize(m_child.picture);
    return Rect::at({control.right - m_child.rightSpace - size.width, control.top + m_child.offsetY}, size);
}

void CRadioBox::drawBackground(IVexRenderDC& dc, const Rect& control)
{
    if (showsBlinkPicture())
        TemporarySection(m_blinkPicture).draw(dc, control);
    else if (m_properties.drawsColor.isSet())
        currentLook().color.fill(dc, control);
    else
        currentLook().back.draw(dc, control);
}

void CRadioBox::drawGraphic(IVexRenderDC& dc, const Rect& control)
{
    if (hasStrip()) {
        strip().draw(dc, graphicRect(control, strip().frameSize()), static_cast<int>(m_state));
        return;
    }
    GraphicBitmap& bitmap = m_bitmaps[currentIndex()];
    if (bitmap.handle != 0) {
        if (!bitmap.image)
            bitmap.image.makeFromHandle(host(), bitmap.handle, VEX_PT_BMP);
        bitmap.image.draw(dc, graphicRect(control, bitmap.image.size()));
        return;
    }
    const ImageProp& section = currentLook().graphics;
    if (section.hasPicture())
        section.draw(dc, graphicRect(control, section.imageSize()));
}

void CRadioBox::render(IVexRenderDC& dc)
{
    settleState();
    const Rect control = ownRect();
    drawBackground(dc, control);
    currentLook().box.draw(dc, placeBox(control, boxSize(), isMirrored()));
    drawGraphic(dc, control);
    const Bstr text = m_properties.caption.shown();
    if (!text.empty())
        currentLook().textStyle.draw(dc, textRect(control), text);
    if (m_child.isSet && m_child.picture)
        TemporarySection(m_child.picture).draw(dc, childImageRect(control));
    drawFocusMark(dc);
}

void CRadioBox::drawGraphic(const DcPainter& painter, const Rect& control)
{
    const auto bitmap = reinterpret_cast<HBITMAP>(m_bitmaps[currentIndex()].handle);
    const ImageProp& section = currentLook().graphics;
    if (hasStrip())
        strip().draw(painter, graphicRect(control, strip().frameSize()), static_cast<int>(m_state));
    else if (bitmap)
        painter.drawAlphaBitmap(bitmap, graphicRect(control, bitmapSize(bitmap)));
    else if (const ComPtr<IVexImageBase> image = section.section(); image && section.hasPicture())
        painter.drawSection(*image, graphicRect(control, section.imageSize()));
}

HRESULT CRadioBox::drawOnDc(IVexObjectDraw* objectDraw, VARIANT_BOOL* result)
{
    if (!objectDraw || !result)
        return E_POINTER;
    *result = VARIANT_FALSE;
    settleState();
    const DcPainter painter(*objectDraw);
    const Rect control = ownRect();
    Look& look = currentLook();

    if (showsBlinkPicture())
        TemporarySection(m_blinkPicture).draw(painter, control);
    else if (m_properties.drawsColor.isSet())
        painter.fillColor(look.color.value(), control);
    else if (const ComPtr<IVexImageBase> back = look.back.section())
        painter.drawSection(*back, control);

    if (const ComPtr<IVexImageBase> box = look.box.section())
        painter.drawSection(*box, placeBox(control, boxSize(), isMirrored()));

    drawGraphic(painter, control);
    const Bstr text = m_properties.caption.shown();
    const ComPtr<IVexTextStyle> style = look.textStyle.style();
    if (style && !text.empty())
        painter.drawText(*style, text, textRect(control));
    if (m_child.isSet && m_child.picture)
        TemporarySection(m_child.picture).draw(painter, childImageRect(control));
    *result = VARIANT_TRUE;
    return S_OK;
}

} // namespace morvane
