#include "ambrel/objects/position_layout.h"

#include <algorithm>
#include <array>

namespace ambrel {

namespace {

constexpr std::int64_t kFarthest = 1 << 29; // keeps every sum and difference of two edges inside 32 bits

constexpr std::int64_t kMostPercent = 1'000'000;

struct Extent {
    std::int64_t from;
    std::int64_t to;

    std::int64_t length() const noexcept { return to - from; }
};

std::int64_t bounded(std::int64_t value) noexcept
{
    return std::clamp(value, -kFarthest, kFarthest);
}

/// Hundredths of a length, rounded half up.
std::int64_t percentOf(std::int64_t length, std::int64_t percent) noexcept
{
    const std::int64_t scaled = length * std::clamp<std::int64_t>(percent, -kMostPercent, kMostPercent) + 50;
    return scaled >= 0 ? scaled / 100 : -((99 - scaled) / 100);
}

std::int64_t asPercent(std::int64_t part, std::int64_t length) noexcept
{
    return length <= 0 ? 0 : percentOf(part * 10000 / length, 1); // from hundredths of a percent
}

Extent centred(Extent parent, std::int64_t size, std::int64_t offset) noexcept
{
    const std::int64_t from = parent.from + (parent.length() - size) / 2 + offset;
    return {from, from + size};
}

Extent anchored(Anchor anchor, Extent parent, std::int64_t nearGap, std::int64_t farGap, std::int64_t size) noexcept
{
    switch (anchor) {
    case Anchor::Centre:
        return centred(parent, size, nearGap);
    case Anchor::Far:
        return {parent.to - farGap - size, parent.to - farGap};
    case Anchor::Near:
        break;
    }
    return {parent.from + nearGap, parent.from + nearGap + size};
}

Extent movedInside(Extent extent, Extent parent) noexcept
{
    if (extent.length() > parent.length())
        return extent;
    const std::int64_t from = std::clamp(extent.from, parent.from, parent.to - extent.length());
    return {from, from + extent.length()};
}

Extent inPercent(const PositionHalf& half, std::int64_t size, Extent parent) noexcept
{
    const std::int64_t length = parent.length();
    switch (half.anchor) {
    case Anchor::Centre:
        return centred(parent, percentOf(length, size), percentOf(length, half.nearGap));
    case Anchor::Far:
        return {parent.to - percentOf(length, half.farGap + size), parent.to - percentOf(length, half.farGap)};
    case Anchor::Near:
        break;
    }
    return {parent.from + percentOf(length, half.nearGap), parent.from + percentOf(length, half.nearGap + size)};
}

Extent layOut(const PositionHalf& half, Extent parent) noexcept
{
    const std::int64_t size = std::max<std::int64_t>(half.size, 0);
    switch (half.space) {
    case Space::BothEdges: {
        const std::int64_t from = parent.from + half.nearGap;
        return {from, std::max(from, parent.to - half.farGap)};
    }
    case Space::Percent:
        return inPercent(half, size, parent);
    case Space::FixedSize:
        return movedInside(anchored(half.anchor, parent, half.nearGap, half.farGap, size), parent);
    case Space::NearAndSize:
        break;
    }
    return anchored(half.anchor, parent, half.nearGap, half.farGap, size);
}

PositionHalf halfFor(Extent extent, Extent parent, const PositionHalf& kind) noexcept
{
    std::int64_t nearGap = extent.from - parent.from;
    const std::int64_t farGap = parent.to - extent.to;
    if (kind.anchor == Anchor::Centre && kind.space != Space::BothEdges)
        nearGap = extent.from - centred(parent, extent.length(), 0).from;
    const bool percent = kind.space == Space::Percent;
    const auto number = [&](std::int64_t value) {
        return static_cast<std::int32_t>(bounded(percent ? asPercent(value, parent.length()) : value));
    };
    return {kind.anchor, kind.space, number(nearGap), number(farGap), number(extent.length())};
}

Extent horizontalOf(const Rect& rect, const Rect& parent, bool mirrored) noexcept
{
    const auto reflected = [&](std::int64_t x) { return std::int64_t{parent.left} + parent.right - x; };
    return mirrored ? Extent{reflected(rect.right), reflected(rect.left)} : Extent{rect.left, rect.right};
}

int edge(std::int64_t value) noexcept
{
    return static_cast<int>(bounded(value));
}

PositionHalf half(Anchor anchor, Space space, int size) noexcept
{
    return {anchor, space, 0, 0, size};
}

} // namespace

Rect layOut(const Position& position, const Rect& parent, bool mirrored) noexcept
{
    Extent x = layOut(position.horizontal, {parent.left, parent.right});
    const Extent y = layOut(position.vertical, {parent.top, parent.bottom});
    if (mirrored) {
        const std::int64_t edges = std::int64_t{parent.left} + parent.right;
        x = {edges - x.to, edges - x.from};
    }
    return {edge(x.from), edge(y.from), edge(x.to), edge(y.to)};
}

Rect withinReach(const Rect& rect) noexcept
{
    return {edge(rect.left), edge(rect.top), edge(rect.right), edge(rect.bottom)};
}

Position positionFor(const Rect& rect, const Rect& parent, const Position& kind, bool mirrored) noexcept
{
    return {halfFor(horizontalOf(rect, parent, mirrored), {parent.left, parent.right}, kind.horizontal),
            halfFor({rect.top, rect.bottom}, {parent.top, parent.bottom}, kind.vertical)};
}

Position dockedPosition(Dock dock, Size size, bool full) noexcept
{
    struct Anchors {
        Anchor horizontal;
        Anchor vertical;
        bool alongHorizontal = false; // the edge that a full dock fills
        bool alongVertical = false;
    };
    using enum Anchor;
    static constexpr std::array<Anchors, kDockCount> kAnchors = {{
        {Near, Near},              // LeftTop
        {Near, Near, false, true}, // Left
        {Far, Near, false, true},  // Right
        {Near, Near, true, false}, // Top
        {Near, Far, true, false},  // Bottom
        {Near, Far},               // LeftBottom
        {Far, Far},                // RightBottom
        {Far, Near},               // RightTop
        {Near, Near, true, true},  // Client
        {Centre, Near},            // CentreTop
        {Centre, Far},             // CentreBottom
        {Near, Centre},            // MiddleLeft
        {Far, Centre},             // MiddleRight
        {Centre, Centre},          // Centre
    }};
    const Anchors& at = kAnchors[std::min<std::size_t>(static_cast<std::size_t>(dock), kDockCount - 1)];
    const bool fills = full || dock == Dock::Client;
    return {half(at.horizontal, fills && at.alongHorizontal ? Space::BothEdges : Space::NearAndSize, size.width),
            half(at.vertical, fills && at.alongVertical ? Space::BothEdges : Space::NearAndSize, size.height)};
}

Position centredPosition(Size size) noexcept
{
    return dockedPosition(Dock::Centre, size, false);
}

} // namespace ambrel
