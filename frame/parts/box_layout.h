// A mark beside a text: where check boxes and radio boxes put their box.
#pragma once

#include "base/geometry.h"

namespace morvane {

inline constexpr int kGapBesideBox = 2; // pixels

/// The box at the near edge (the far one when mirrored), centred vertically.
constexpr Rect placeBox(const Rect& control, Size box, bool isMirrored)
{
    const int left = isMirrored ? saturatingSubtract(control.right, box.width) : control.left;
    return Rect::at({left, centredIn(control, box).top}, box);
}

/// What remains for the text beside a box of the given width.
constexpr Rect textBesideBox(const Rect& control, int boxWidth, bool isMirrored)
{
    Rect text = control;
    const int taken = saturatingAdd(kGapBesideBox, boxWidth);
    if (isMirrored)
        text.right = saturatingSubtract(text.right, taken);
    else
        text.left = saturatingAdd(text.left, taken);
    return text;
}

} // namespace morvane
