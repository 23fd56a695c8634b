// Texts that were drawn aside.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/recent_texts.h"

#include <cstdint>
#include <vector>

namespace ambrel {

/// How much of each pixel a text covers, as far as there is ink: drawn in any colour by one blend.
struct TextMask {
    Rect box; // from wherever the text is said to be
    std::vector<std::uint8_t> coverage;
    bool isWhole = true; // false: the text is too large to be kept and has to be drawn as far as it shows

    void draw(const Canvas& canvas, Point at, Pixel colour) const;

    friend std::size_t bytesOf(const TextMask& mask) { return mask.coverage.capacity(); }
};

/// Larger texts are not worth their memory.
constexpr bool isWorthKeeping(Size size)
{
    return std::int64_t{size.width} * size.height <= 64 * 1024;
}

/// What was drawn in white on nothing, its left top corner at `origin`. Throws std::bad_alloc.
TextMask maskOf(ConstPixelView drawn, Point origin);

/// The same turned by 90 degrees clockwise.
TextMask turnedMaskOf(ConstPixelView drawn);

/// What lies around a text, `radius` pixels further on each side.
TextMask thickened(const TextMask& mask, int radius);
TextMask softened(const TextMask& mask, int radius);

} // namespace ambrel
