// The rectangles of a window that wait to be painted.
#pragma once

#include "base/geometry.h"

#include <array>
#include <cstddef>
#include <span>

namespace ambrel {

/// Collects rectangles; never holds more than kMaxRects, joining those whose union wastes the fewest pixels. What was
/// added is always covered; rectangles held may overlap.
class InvalidRegion {
public:
    static constexpr std::size_t kMaxRects = 8;

    /// Empty rectangles add nothing.
    void add(const morvane::Rect& added) noexcept;
    void clear() noexcept { m_count = 0; }
    bool isEmpty() const noexcept { return m_count == 0; }
    /// Whether one of the rectangles held contains `rect`.
    bool covers(const morvane::Rect& rect) const noexcept;
    std::span<const morvane::Rect> rects() const noexcept { return {m_rects.data(), m_count}; }
    morvane::Rect bounds() const noexcept;
    /// Drops everything outside `limits` (the window's client area).
    void clip(const morvane::Rect& limits) noexcept;

private:
    void removeAt(std::size_t index) noexcept;

    std::array<morvane::Rect, kMaxRects + 1> m_rects;
    std::size_t m_count = 0;
};

} // namespace ambrel
