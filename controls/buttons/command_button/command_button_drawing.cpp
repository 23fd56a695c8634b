// The button's looks, from state and layout to drawing calls.
#include "controls/buttons/command_button/command_button.h"

namespace morvane {

bool CCmdButton::isCursorInside()
{
    POINT cursor{};
    if (!host().window || !GetCursorPos(&cursor) || !ScreenToClient(host().window, &cursor))
        return false;
    return ownRect().contains(Point{static_cast<int>(cursor.x), static_cast<int>(cursor.y)});
}

void CCmdButton::updateState()
{
    const bool isEnabledNow = isEnabled();
    if (!isDesignTime() && !m_isStateForced) {
        ButtonFacts facts;
        facts.isEnabled = isEnabledNow;
        facts.wasGivenFocus = hasFocus();
        facts.isFocusObject = isFocusObject();
        facts.isLeftButtonDown = isLeftButtonDown();
        facts.isMouseOver = isMouseOver();
        facts.isCursorInside = facts.isMouseOver && isCursorInside();
        const ButtonStateDecision decision = decideButtonState(facts);
        m_state = decision.state;
        if (decision.clearsMouseOver)
            setMouseOver(false);
        if (decision.asksForRedraw)
            redraw();
    }
    if (!isEnabledNow)
        m_state = ButtonState::Disable; // even pinned or being designed
}

void CCmdButton::render(IVexRenderDC& dc)
{
    updateState();
    const Rect control = ownRect();
    drawBackground(dc, control);
    const GraphicPlacement placement = m_properties.graphic.placement();
    const int graphicWidth = drawGraphic(dc, control, placement);
    drawText(dc, control, placement, graphicWidth);
    drawFocusMark(dc);
}

void CCmdButton::drawBackground(IVexRenderDC& dc, const Rect& control)
{
    const Back* const back = m_back ? &(*m_back)[static_cast<std::size_t>(m_state)] : nullptr;
    if (back && back->image)
        back->image.draw(dc, control);
    else
        currentLook().image.draw(dc, control);
}

CCmdButton::GraphicSource CCmdButton::graphicSource()
{
    if (hasStrip())
        return GraphicSource::Strip;
    if (m_graphic)
        return GraphicSource::Image;
    return lookOf(m_state).graphics.hasPicture() ? GraphicSource::Section : GraphicSource::None;
}

Size CCmdButton::graphicSize(GraphicSource source)
{
    switch (source) {
    case GraphicSource::Strip:
        return strip().frameSize();
    case GraphicSource::Image:
        return m_graphic.size();
    case GraphicSource::Section:
        return lookOf(m_state).graphics.imageSize();
    case GraphicSource::None:
        break;
    }
    return {};
}

/// The width of what was drawn; 0 without a graphic.
int CCmdButton::drawGraphic(IVexRenderDC& dc, const Rect& control, const GraphicPlacement& placement)
{
    const GraphicSource source = graphicSource();
    const Size size = graphicSize(source);
    const Rect place = placeGraphic(placement, control, size);
    if (source == GraphicSource::Strip)
        strip().draw(dc, place, static_cast<int>(m_state));
    else if (source == GraphicSource::Image)
        m_graphic.draw(dc, place);
    else if (source == GraphicSource::Section)
        lookOf(m_state).graphics.draw(dc, place);
    return size.width;
}

void CCmdButton::drawText(IVexRenderDC& dc, const Rect& control, const GraphicPlacement& placement, int graphicWidth)
{
    const Bstr text = m_properties.caption.shown();
    if (text.empty())
        return;
    // Only a button that fits itself to its text keeps the text clear of the graphic.
    const bool besideGraphic = m_properties.autoSize.isEnabled() && !placement.isStacked;
    currentLook().textStyle.draw(dc, besideGraphic ? textBesideGraphic(placement, control, graphicWidth) : control,
                                 text);
}

} // namespace morvane
