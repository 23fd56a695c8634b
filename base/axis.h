// One direction of the plane, so that geometry that works along a line is written once.
#pragma once

#include "base/geometry.h"

namespace morvane {

enum class Axis { Horizontal, Vertical };

constexpr Axis across(Axis axis)
{
    return axis == Axis::Horizontal ? Axis::Vertical : Axis::Horizontal;
}

constexpr int along(Axis axis, Point p)
{
    return axis == Axis::Horizontal ? p.x : p.y;
}
constexpr int along(Axis axis, Size s)
{
    return axis == Axis::Horizontal ? s.width : s.height;
}
constexpr int nearEdge(Axis axis, const Rect& r)
{
    return axis == Axis::Horizontal ? r.left : r.top;
}
constexpr int farEdge(Axis axis, const Rect& r)
{
    return axis == Axis::Horizontal ? r.right : r.bottom;
}
constexpr int extent(Axis axis, const Rect& r)
{
    return farEdge(axis, r) - nearEdge(axis, r);
}

/// A rectangle from its two spans: [nearAlong, farAlong) along the axis and [nearAcross, farAcross) across it.
constexpr Rect rectFromSpans(Axis axis, int nearAlong, int farAlong, int nearAcross, int farAcross)
{
    return axis == Axis::Horizontal ? Rect{nearAlong, nearAcross, farAlong, farAcross}
                                    : Rect{nearAcross, nearAlong, farAcross, farAlong};
}

} // namespace morvane
