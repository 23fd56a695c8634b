// Where a control's graphic lies beside or above its text.
#pragma once

#include "base/geometry.h"

namespace morvane {

struct GraphicPlacement {
    bool isStacked = false;      // above the text, centred; otherwise beside it
    bool isRightAligned = false; // beside the text, at its right
    int x = 0;                   // shifts, in pixels
    int y = 0;
};

///     beside, left      |x [graphic] text        |
///     beside, right     |text        [graphic] x |     y moves it only when left-aligned; saved skins rely on it
///     stacked           |       [graphic]        |     top edge, then shifted by x and y
constexpr Rect placeGraphic(const GraphicPlacement& placement, const Rect& control, Size graphic)
{
    if (placement.isStacked) {
        const Point origin{control.left + (control.width() - graphic.width) / 2, control.top};
        return Rect::at(origin, graphic).shifted(placement.x, placement.y);
    }
    const int middle = control.top + (control.height() - graphic.height) / 2;
    if (placement.isRightAligned)
        return Rect::at({control.right - placement.x - graphic.width, middle}, graphic);
    return Rect::at({control.left + placement.x, middle + placement.y}, graphic);
}

/// What remains for the text beside a graphic of the given width; 0 where there is no graphic.
constexpr Rect textBesideGraphic(const GraphicPlacement& placement, const Rect& control, int graphicWidth)
{
    Rect text = control;
    const int taken = graphicWidth == 0 ? 0 : graphicWidth + placement.x;
    if (placement.isRightAligned)
        text.right -= taken;
    else
        text.left += taken;
    return text;
}

} // namespace morvane
