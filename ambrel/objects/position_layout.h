// Positions: how an object keeps its place in its parent when the parent changes its size. Plain values, no COM.
//
// A position has two halves that follow the same rules, horizontal (near = left) and vertical (near = top). Each half
// has an anchor (the alignment), a space type and three numbers: near and far distance to the parent's edges, and the
// size.
//
//     |<- near ->|<--- size --->|<- far ->|      the parent's extent
//
//     NearAndSize (LEFTWIDTH, TOPHEIGHT)
//         anchor Near: near and size are kept, far follows the parent; anchor Far: far and size are kept; anchor
//         Centre: centred, moved by the near distance
//     BothEdges (RIGHTWIDTH, BOTTOMHEIGHT)
//         near and far are kept, the size follows the parent, whatever the anchor
//     Percent
//         like NearAndSize, with distance and size in hundredths of the parent's extent; edges are rounded one by one,
//         so that neighbours that add up to 100 percent leave no gap
//     FixedSize (FASTNESS)
//         like NearAndSize; the size is the object's own (an object that measures itself may change it), and the object
//         is moved back inside where the parent is large enough to hold it
#pragma once

#include "base/geometry.h"

#include <cstdint>

namespace ambrel {

using morvane::Point;
using morvane::Rect;
using morvane::Size;

enum class Anchor : std::uint8_t { Near, Centre, Far };
enum class Space : std::uint8_t { NearAndSize, BothEdges, Percent, FixedSize };

/// One half of a position. The numerical values of the enumerations are those of the contract's records.
struct PositionHalf {
    Anchor anchor = Anchor::Near;
    Space space = Space::NearAndSize;
    std::int32_t nearGap = 0;
    std::int32_t farGap = 0;
    std::int32_t size = 0;

    friend constexpr bool operator==(const PositionHalf&, const PositionHalf&) = default;
};

struct Position {
    PositionHalf horizontal;
    PositionHalf vertical;

    friend constexpr bool operator==(const Position&, const Position&) = default;
};

/// Where an object lies inside a parent. A size below zero counts as zero; results stay within +-2^29. In a mirrored
/// parent the horizontal near edge is the right one.
Rect layOut(const Position& position, const Rect& parent, bool mirrored = false) noexcept;

/// The rectangle with its edges within +-2^29, so that whoever calculates with them stays inside 32 bits.
Rect withinReach(const Rect& rect) noexcept;

/// The numbers that give `rect` inside `parent` with the anchors and space types of `kind`: layOut of the result is
/// `rect` again (with Percent: as near as whole percents allow; with FixedSize: where `rect` lies inside). All three
/// numbers of a half are filled, so that a reader finds the distances whatever the space type.
Position positionFor(const Rect& rect, const Rect& parent, const Position& kind, bool mirrored = false) noexcept;

/// Places that an object can be docked to; the values are those of the contract.
enum class Dock : std::uint8_t {
    LeftTop,
    Left,
    Right,
    Top,
    Bottom,
    LeftBottom,
    RightBottom,
    RightTop,
    Client,
    CentreTop,
    CentreBottom,
    MiddleLeft,
    MiddleRight,
    Centre,
};
inline constexpr int kDockCount = 14;

/// The position of an object docked in its parent. `size` is the object's present size. With `full` an edge dock (Left,
/// Right, Top, Bottom) also fills the edge's whole length; without it the object keeps its own length at the near end.
/// Client always fills the parent.
Position dockedPosition(Dock dock, Size size, bool full) noexcept;

/// Centred on both axes, keeping `size`.
Position centredPosition(Size size) noexcept;

} // namespace ambrel
