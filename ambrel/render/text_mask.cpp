#include "ambrel/render/text_mask.h"

#include <algorithm>
#include <cmath>

namespace ambrel {

namespace {

Rect inkOf(ConstPixelView drawn)
{
    Rect ink{drawn.width, drawn.height, 0, 0};
    for (int y = 0; y < drawn.height; ++y)
        for (int x = 0; x < drawn.width; ++x)
            if (greenOf(drawn.at(x, y)) != 0)
                ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1), y + 1};
    return ink.isEmpty() ? Rect{} : ink;
}

std::uint8_t coverageOf(Pixel white)
{
    return static_cast<std::uint8_t>(greenOf(white));
}

/// The mask with so many empty pixels more on each side.
TextMask widened(const TextMask& mask, int by)
{
    TextMask wide{mask.box.isEmpty() ? Rect{} : mask.box.inflated(by), {}};
    wide.coverage.resize(static_cast<std::size_t>(wide.box.width()) * wide.box.height());
    for (int y = 0; y < mask.box.height(); ++y)
        std::copy_n(mask.coverage.begin() + y * mask.box.width(), mask.box.width(),
                    wide.coverage.begin() + (y + by) * wide.box.width() + by);
    return wide;
}

/// Replaces each of `count` values, `step` apart, by the mean of those up to `radius` places away; beyond the ends is
/// nothing. `line` is room for as many values.
void average(std::uint8_t* values, int count, int step, int radius, std::vector<std::uint8_t>& line)
{
    for (int i = 0; i < count; ++i)
        line[static_cast<std::size_t>(i)] = values[static_cast<std::ptrdiff_t>(i) * step];
    const auto at = [&](int i) { return i >= 0 && i < count ? int{line[static_cast<std::size_t>(i)]} : 0; };
    int sum = 0;
    for (int i = 0; i < radius; ++i)
        sum += at(i);
    for (int i = 0; i < count; ++i) {
        sum += at(i + radius);
        values[static_cast<std::ptrdiff_t>(i) * step] = static_cast<std::uint8_t>(sum / (2 * radius + 1));
        sum -= at(i - radius);
    }
}

void averageBothWays(TextMask& mask, int radius)
{
    const int width = mask.box.width();
    const int height = mask.box.height();
    std::vector<std::uint8_t> line(static_cast<std::size_t>(std::max(width, height)));
    for (int y = 0; y < height; ++y)
        average(mask.coverage.data() + static_cast<std::ptrdiff_t>(y) * width, width, 1, radius, line);
    for (int x = 0; x < width; ++x)
        average(mask.coverage.data() + x, height, width, radius, line);
}

} // namespace

TextMask thickened(const TextMask& mask, int radius)
{
    TextMask thick = widened(mask, radius);
    const auto put = [&](int left, int y, int count, std::uint8_t value) {
        std::uint8_t* const row = thick.coverage.data() + static_cast<std::ptrdiff_t>(y) * thick.box.width() + left;
        for (int i = 0; i < count; ++i)
            row[i] = std::max(row[i], value);
    };
    const auto* value = mask.coverage.data();
    for (int y = 0; y < mask.box.height(); ++y)
        for (int x = 0; x < mask.box.width(); ++x, ++value)
            for (int dy = -radius; *value != 0 && dy <= radius; ++dy) {
                const int reach = static_cast<int>(std::sqrt((radius + 0.5) * (radius + 0.5) - dy * dy));
                put(x + radius - reach, y + radius + dy, 2 * reach + 1, *value);
            }
    return thick;
}

TextMask softened(const TextMask& mask, int radius)
{
    TextMask soft = widened(mask, radius);
    if (soft.box.isEmpty())
        return soft;
    averageBothWays(soft, (radius + 1) / 2); // twice: no corners of a square are seen
    averageBothWays(soft, radius / 2);
    return soft;
}

void TextMask::draw(const Canvas& canvas, Point at, Pixel colour) const
{
    if (!box.isEmpty())
        blendMask(canvas, at + box.topLeft(), box.size(), coverage, box.width(), colour);
}

TextMask maskOf(ConstPixelView drawn, Point origin)
{
    const Rect ink = inkOf(drawn);
    TextMask mask{ink.shifted(origin.x, origin.y), {}};
    mask.coverage.reserve(static_cast<std::size_t>(ink.width()) * ink.height());
    for (int y = ink.top; y < ink.bottom; ++y)
        for (int x = ink.left; x < ink.right; ++x)
            mask.coverage.push_back(coverageOf(drawn.at(x, y)));
    return mask;
}

TextMask turnedMaskOf(ConstPixelView drawn)
{
    const Rect ink = inkOf(drawn);
    TextMask mask{{drawn.height - ink.bottom, ink.left, drawn.height - ink.top, ink.right}, {}};
    mask.coverage.reserve(static_cast<std::size_t>(ink.width()) * ink.height());
    for (int x = ink.left; x < ink.right; ++x)
        for (int y = ink.bottom - 1; y >= ink.top; --y)
            mask.coverage.push_back(coverageOf(drawn.at(x, y)));
    return mask;
}

} // namespace ambrel
