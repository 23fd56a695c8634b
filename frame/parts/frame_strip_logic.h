// One picture that holds a frame per state.
#pragma once

#include "base/geometry.h"
#include "base/rounding.h"

#include <algorithm>

namespace morvane {

struct FrameStripGeometry {
    Size picture;
    int frameCount = 1;
    bool isHorizontal = true; // frames side by side; otherwise one above the other
};

/// The size of one frame; empty for a strip without frames.
constexpr Size frameSize(const FrameStripGeometry& strip)
{
    if (strip.frameCount <= 0)
        return {};
    return strip.isHorizontal ? Size{strip.picture.width / strip.frameCount, strip.picture.height}
                              : Size{strip.picture.width, narrowed16(strip.picture.height / strip.frameCount)};
}

/// Where the frame of a state lies in the picture. States past the end show the last frame.
constexpr Rect frameRect(const FrameStripGeometry& strip, int state)
{
    const Size size = frameSize(strip);
    const int index = std::clamp(state, 0, std::max(strip.frameCount - 1, 0));
    return Rect::at(strip.isHorizontal ? Point{index * size.width, 0} : Point{0, index * size.height}, size);
}

} // namespace morvane
