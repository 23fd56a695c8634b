#include "ambrel/skin/position.h"

#include "ambrel/skin/text.h"

#include <array>

namespace ambrel::skin {

namespace {

struct AxisPart {
    std::string_view prefix;
    std::int32_t PositionAxis::*member;
    std::int32_t least;
    std::int32_t most;
};

using AxisParts = std::array<AxisPart, 5>;

constexpr AxisParts kHorizontal = {{
    {"HA", &PositionAxis::align, 0, kLargestAlign},
    {"HST", &PositionAxis::space, 0, kLargestSpace},
    {"l", &PositionAxis::nearDistance, -kLargestDistance, kLargestDistance},
    {"r", &PositionAxis::farDistance, -kLargestDistance, kLargestDistance},
    {"w", &PositionAxis::size, -kLargestDistance, kLargestDistance},
}};

constexpr AxisParts kVertical = {{
    {"VA", &PositionAxis::align, 0, kLargestAlign},
    {"VST", &PositionAxis::space, 0, kLargestSpace},
    {"t", &PositionAxis::nearDistance, -kLargestDistance, kLargestDistance},
    {"b", &PositionAxis::farDistance, -kLargestDistance, kLargestDistance},
    {"h", &PositionAxis::size, -kLargestDistance, kLargestDistance},
}};

// Reads one "prefix number" into the axis and tells which part it was, -1 for none.
int readPart(std::string_view text, const AxisParts& parts, PositionAxis& axis)
{
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const AxisPart& part = parts[i];
        if (!text.starts_with(part.prefix))
            continue;
        const auto number = parseInteger(text.substr(part.prefix.size()), part.least, part.most);
        if (!number.value)
            continue;
        axis.*part.member = *number.value;
        return static_cast<int>(i);
    }
    return -1;
}

std::optional<PositionAxis> parseAxis(std::string_view text, const AxisParts& parts)
{
    PositionAxis axis;
    unsigned seen = 0;
    for (std::size_t count = 0; count < parts.size(); ++count) {
        const bool last = count + 1 == parts.size();
        const std::size_t end = text.find(',');
        if (last != (end == std::string_view::npos))
            return std::nullopt;
        const int part = readPart(text.substr(0, end), parts, axis);
        if (part < 0)
            return std::nullopt;
        seen |= 1u << part;
        text.remove_prefix(last ? text.size() : end + 1);
    }
    return seen == 0x1F ? std::optional(axis) : std::nullopt;
}

std::string formatAxis(const PositionAxis& axis, const AxisParts& parts)
{
    std::string out;
    for (const AxisPart& part : parts) {
        if (!out.empty())
            out += ',';
        out += part.prefix;
        out += std::to_string(axis.*part.member);
    }
    return out;
}

} // namespace

std::optional<Position> parsePosition(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const auto horizontal = parseAxis(text.substr(0, colon), kHorizontal);
    const auto vertical = parseAxis(text.substr(colon + 1), kVertical);
    if (!horizontal || !vertical)
        return std::nullopt;
    return Position{*horizontal, *vertical};
}

std::string formatPosition(const Position& position)
{
    return formatAxis(position.horizontal, kHorizontal) + ':' + formatAxis(position.vertical, kVertical);
}

} // namespace ambrel::skin
