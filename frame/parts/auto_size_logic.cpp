#include "frame/parts/auto_size_logic.h"

#include "base/rounding.h"

#include <algorithm>
#include <cstdint>

namespace morvane {

namespace {

constexpr int kMeasureExtent = 1000; // wide enough that an unwrapped text stays on one line
constexpr int kRoomBesideText = 4;
constexpr int kRoomBesideEverything = 2;

std::optional<Size> textSize(const AutoSizeRequest& request, int maxWidth, TextMeasure& text)
{
    if (!request.hasTextStyle || request.textLength == 0)
        return Size{};
    const std::optional<Size> free = text.measure({kMeasureExtent, kMeasureExtent});
    if (!free)
        return std::nullopt;
    if (maxWidth >= free->width)
        return Size{saturatingAdd(free->width, kRoomBesideText), free->height};
    const std::optional<Size> wrapped = text.measure({maxWidth, kMeasureExtent});
    if (!wrapped)
        return std::nullopt;
    return Size{maxWidth, wrapped->height};
}

Size clamped(Size size, int textLength, const AutoSizeLimits& limits, int maxWidth)
{
    size.width = size.width < limits.minWidth ? limits.minWidth : std::min(size.width, maxWidth);
    if (textLength == 0)
        size = {limits.minWidth, limits.minHeight};
    size.height = std::max(size.height, limits.minHeight);
    if (limits.maxHeight != 0)
        size.height = std::min(size.height, limits.maxHeight);
    return size;
}

} // namespace

std::optional<AutoSizeResult> autoSize(const AutoSizeRequest& request, TextMeasure& text)
{
    const int maxWidth = request.widthIsFixed ? request.limits.maxWidth : request.current.width;
    const std::optional<Size> measured = textSize(request, maxWidth, text);
    if (!measured)
        return std::nullopt;
    const Size size = clamped(*measured, request.textLength, request.limits, maxWidth);

    // The text alone is compared with the whole control, so a fixed width is stored again at every forced run while
    // something stands beside the text. Positions travel as 16-bit numbers here.
    const std::int64_t difference = static_cast<std::int64_t>(size.width) - request.current.width;
    const int widthChange = request.widthIsFixed ? narrowed16(static_cast<int>(difference & 0xFFFF)) : 0;
    if (narrowed16(size.height) == narrowed16(request.storedHeight) && widthChange == 0)
        return std::nullopt;

    AutoSizeResult result{size.height, std::nullopt};
    if (request.storesWidth)
        result.width = saturatingAdd(saturatingAdd(size.width, kRoomBesideEverything), request.besideText);
    return result;
}

} // namespace morvane
