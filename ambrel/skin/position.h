#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ambrel::skin {

/// One direction of a position record: where a control lies in its parent. Field values are those of the framework's
/// position record; distances and sizes are in pixels, or in percent where the space type says so.
struct PositionAxis {
    std::int32_t align = 0; ///< 0 near, 1 centre, 2 far
    std::int32_t space = 0; ///< 0 distance and size, 1 both distances, 2 percent, 3 distance and own size
    std::int32_t nearDistance = 0;
    std::int32_t farDistance = 0;
    std::int32_t size = 0;

    bool operator==(const PositionAxis&) const = default;
};

struct Position {
    PositionAxis horizontal;
    PositionAxis vertical;

    bool operator==(const Position&) const = default;
};

inline constexpr std::int32_t kLargestAlign = 2;
inline constexpr std::int32_t kLargestSpace = 3;
inline constexpr std::int32_t kLargestDistance = 1000000;

/// Reads a position in the compact form "HA0,HST3,l114,r0,w206:VA0,VST3,t131,b0,h109"; the five parts of a direction
/// may stand in any order, but each exactly once. No value when the text is anything else.
std::optional<Position> parsePosition(std::string_view text);

/// The position in the compact form, parts in the order shown above.
std::string formatPosition(const Position& position);

} // namespace ambrel::skin
