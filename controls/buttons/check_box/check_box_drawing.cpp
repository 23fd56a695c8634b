// The check box's looks, from value and state to drawing calls, on render devices and on device contexts.
#include "controls/buttons/check_box/check_box.h"

#include "frame/parts/box_layout.h"
#include "frame/parts/dc_drawing.h"

namespace morvane {

void CVexCheckBox::updateState()
{
    if (!isDesignTime())
        m_state = checkStateOf({isEnabled(), isLeftButtonDown(), isMouseOver()});
}

StateLook& CVexCheckBox::currentLook()
{
    return !m_active.isActive() && m_state == CheckState::Normal ? looksOf(m_value).inactive : lookOf(m_value);
}

Rect CVexCheckBox::boxRect(const Rect& control)
{
    if (m_properties.looksLikePushButton.isSet())
        return control;
    return placeBox(control, currentLook().image.sectionRect().size(), isMirrored());
}

Rect CVexCheckBox::textRect(const Rect& control)
{
    if (m_properties.looksLikePushButton.isSet())
        return control;
    return textBesideBox(control, currentLook().image.sectionRect().width(), isMirrored());
}

/// The graphic of the unchecked value decides whether there is one and how large it is, so that it does not jump
/// between values.
Size CVexCheckBox::graphicSectionSize()
{
    const ImageProp& graphics = lookOf(CheckValue::Unchecked).graphics;
    return graphics.hasPicture() ? graphics.imageSize() : Size{};
}

Rect CVexCheckBox::graphicSectionRect(const Rect& control, Size size)
{
    return placeBox(control, size, isMirrored()).shifted(m_properties.graphicX.value(), m_properties.graphicY.value());
}

RenderImageSlot& CVexCheckBox::graphic()
{
    if (!m_graphic && m_graphicHandle != 0)
        m_graphic.makeFromHandle(host(), m_graphicHandle, m_isGraphicIcon ? VEX_PT_ICO : VEX_PT_BMP);
    return m_graphic;
}

void CVexCheckBox::render(IVexRenderDC& dc)
{
    updateState();
    const Rect control = ownRect();
    currentLook().image.draw(dc, boxRect(control));

    if (m_isGraphicIcon) {
        const Size size = graphic().size();
        const int left = isMirrored() ? control.right - size.width : control.left;
        graphic().draw(dc, Rect::at({left, control.top}, size));
    }

    const Bstr text = m_properties.caption.shown();
    if (!text.empty())
        currentLook().textStyle.draw(dc, textRect(control), text);

    const Size section = graphicSectionSize();
    if (!section.isEmpty())
        currentLook().graphics.draw(dc, graphicSectionRect(control, section));
    drawFocusMark(dc);
}

HRESULT CVexCheckBox::drawOnDc(IVexObjectDraw* objectDraw, VARIANT_BOOL* result)
{
    if (!objectDraw || !result)
        return E_POINTER;
    *result = VARIANT_FALSE;
    updateState();
    const ComPtr<IVexImageBase> box = currentLook().image.section();
    if (!box)
        return S_FALSE;
    const DcPainter painter(*objectDraw);
    const Rect control = ownRect();
    painter.drawSection(*box, boxRect(control));

    if (m_graphicHandle != 0) {
        if (m_isGraphicIcon)
            painter.drawIcon(reinterpret_cast<HICON>(m_graphicHandle), control, isMirrored());
        else
            painter.drawAlphaBitmap(reinterpret_cast<HBITMAP>(m_graphicHandle), control, isMirrored());
    }

    const Bstr text = m_properties.caption.shown();
    const ComPtr<IVexTextStyle> style = currentLook().textStyle.style();
    if (style && !text.empty())
        painter.drawText(*style, text, textRect(control));

    const ComPtr<IVexImageBase> graphics = currentLook().graphics.section();
    const Size section = graphicSectionSize();
    if (graphics && !section.isEmpty())
        painter.drawSection(*graphics, graphicSectionRect(control, section));
    *result = VARIANT_TRUE;
    return S_OK;
}

} // namespace morvane
