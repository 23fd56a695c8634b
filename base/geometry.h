// Points, sizes and rectangles: whole pixels, value types, no platform headers. Coordinates come from outside and may
// be anything: what leaves the 32-bit range stays at its end.
#pragma once

#include "base/rounding.h"

#include <algorithm>
#include <cstdint>

namespace morvane {

struct Point {
    int x = 0;
    int y = 0;

    friend constexpr bool operator==(Point, Point) = default;
    friend constexpr Point operator+(Point a, Point b) { return {saturatingAdd(a.x, b.x), saturatingAdd(a.y, b.y)}; }
    friend constexpr Point operator-(Point a, Point b)
    {
        return {saturatingSubtract(a.x, b.x), saturatingSubtract(a.y, b.y)};
    }
};

struct Size {
    int width = 0;
    int height = 0;

    friend constexpr bool operator==(Size, Size) = default;
    constexpr bool isEmpty() const { return width <= 0 || height <= 0; }
};

/// A rectangle: left and top belong to it, right and bottom do not. One with right <= left or bottom <= top is empty.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    static constexpr Rect at(Point origin, Size size)
    {
        return {origin.x, origin.y, saturatingAdd(origin.x, size.width), saturatingAdd(origin.y, size.height)};
    }

    friend constexpr bool operator==(const Rect&, const Rect&) = default;

    constexpr int width() const { return saturatingSubtract(right, left); }
    constexpr int height() const { return saturatingSubtract(bottom, top); }
    constexpr Size size() const { return {width(), height()}; }
    constexpr Point topLeft() const { return {left, top}; }
    constexpr bool isEmpty() const { return right <= left || bottom <= top; }
    constexpr bool contains(Point p) const { return p.x >= left && p.x < right && p.y >= top && p.y < bottom; }

    constexpr bool contains(const Rect& other) const
    {
        return other.isEmpty() ||
               (other.left >= left && other.right <= right && other.top >= top && other.bottom <= bottom);
    }

    constexpr bool intersects(const Rect& other) const { return !intersection(other).isEmpty(); }

    /// The common part; an empty rectangle where there is none.
    constexpr Rect intersection(const Rect& other) const
    {
        const Rect common{std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                          std::min(bottom, other.bottom)};
        return common.isEmpty() ? Rect{} : common;
    }

    /// The smallest rectangle that holds both; an empty one adds nothing.
    constexpr Rect united(const Rect& other) const
    {
        if (isEmpty())
            return other;
        if (other.isEmpty())
            return *this;
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }

    constexpr Rect shifted(int dx, int dy) const
    {
        return {saturatingAdd(left, dx), saturatingAdd(top, dy), saturatingAdd(right, dx), saturatingAdd(bottom, dy)};
    }
    constexpr Rect inflated(int by) const
    {
        return {saturatingSubtract(left, by), saturatingSubtract(top, by), saturatingAdd(right, by),
                saturatingAdd(bottom, by)};
    }
};

/// A rectangle of the given size centred in `outer`, the odd pixel going to the right and bottom.
constexpr Rect centredIn(const Rect& outer, Size size)
{
    return Rect::at({saturatingAdd(outer.left, saturatingSubtract(outer.width(), size.width) / 2),
                     saturatingAdd(outer.top, saturatingSubtract(outer.height(), size.height) / 2)},
                    size);
}

/// Two coordinates as they travel in one 64-bit parameter: y in the high half of the low 32 bits, x in the low 16 bits.
/// Computed in 32 bits and sign-extended, so a negative y gives a negative value; a negative x does not touch y.
constexpr std::int64_t packPoint(Point p)
{
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(p.y) << 16) |
                                     (static_cast<std::uint32_t>(p.x) & 0xFFFFu));
}

/// The point of a window message's parameter: x in the low 16 bits, y in the next 16, both signed.
constexpr Point unpackPoint(std::int64_t packed)
{
    return {static_cast<std::int16_t>(packed & 0xFFFF), static_cast<std::int16_t>((packed >> 16) & 0xFFFF)};
}

} // namespace morvane
