// Where a window comes to lie while the pointer drags it or one of its edges. Portable.
#pragma once

#include "base/geometry.h"

#include <limits>

namespace ambrel {

using morvane::Point;
using morvane::Rect;
using morvane::Size;

/// The edges that follow the pointer; none: all of the window does.
struct DragEdges {
    bool left = false;
    bool top = false;
    bool right = false;
    bool bottom = false;

    bool any() const noexcept { return left || top || right || bottom; }
};

struct SizeLimits {
    Size least;
    Size most{std::numeric_limits<int>::max(), std::numeric_limits<int>::max()};
};

/// The place after the pointer went `by`. An edge stops where the window would become smaller or larger than it may;
/// the opposite one stays.
Rect draggedPlace(const Rect& start, DragEdges edges, Point by, const SizeLimits& limits) noexcept;

} // namespace ambrel
