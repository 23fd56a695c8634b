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
    const Rect centred = centredIn(control, graphic);
    if (placement.isStacked)
        return Rect::at({centred.left, control.top}, graphic).shifted(placement.x, placement.y);
    if (placement.isRightAligned) {
        const int right = saturatingSubtract(control.right, placement.x);
        return Rect::at({saturatingSubtract(right, graphic.width), centred.top}, graphic);
    }
    return Rect::at({control.left, centred.top}, graphic).shifted(placement.x, placement.y);
}

/// What remains for the text beside a graphic of the given width; 0 where there is no graphic.
constexpr Rect textBesideGraphic(const GraphicPlacement& placement, const Rect& control, int graphicWidth)
{
    Rect text = control;
    const int taken = graphicWidth == 0 ? 0 : saturatingAdd(graphicWidth, placement.x);
    if (placement.isRightAligned)
        text.right = saturatingSubtract(text.right, taken);
    else
        text.left = saturatingAdd(text.left, taken);
    return text;
}

} // namespace morvane
