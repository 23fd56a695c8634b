// Where windows lie on a desktop of several monitors. Portable: it sees rectangles on the desktop, whose coordinates
// are negative on monitors to the left of or above the primary one.
#pragma once

#include "base/geometry.h"

namespace ambrel {

using morvane::Point;
using morvane::Rect;
using morvane::Size;

/// The place moved as little as needed to lie inside the area; where it is larger than that, its left and top edges do.
Rect keptInside(const Rect& place, const Rect& area) noexcept;

/// A window of this size in the middle of `around` and yet inside the work area: one that belongs to a window at the
/// edge of a monitor can be reached and moved.
Rect centredWithin(const Rect& around, Size size, const Rect& workArea) noexcept;

/// How far a tip stays away from the pointer, in pixels.
struct TipGaps {
    int below;
    int above;
};

/// Below the pointer, above it where there is no room, always inside the work area of the pointer's monitor. What does
/// not fit at all is cut.
Rect placeOfTip(Size size, Point pointer, TipGaps gaps, const Rect& workArea) noexcept;

} // namespace ambrel
