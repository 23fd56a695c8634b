// Pictures cut into nine parts: corners keep their size, edges grow along one axis, the client area along both.
#pragma once

#include "ambrel/pixels/stretch.h"

namespace ambrel {

/// Widths of the fixed borders, in pixels.
struct Borders {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    friend constexpr bool operator==(const Borders&, const Borders&) = default;
};

/// Which parts stretch; the others repeat.
struct PartStretch {
    bool left = true;
    bool top = true;
    bool right = true;
    bool bottom = true;
    bool client = true;

    friend constexpr bool operator==(const PartStretch&, const PartStretch&) = default;
};

struct NineParts {
    Borders sourceBorders; // in the picture's own pixels
    Borders targetBorders; // in the target's pixels; larger or smaller than the source's at other scales
    PartStretch stretch;
    // Size of a repeated piece in the target, relative to the picture's pixels.
    int tileNumerator = 1;
    int tileDenominator = 1;
};

/// The three lengths of one axis: near border, middle, far border. Borders that do not fit share the length in
/// proportion.
struct ThreeLengths {
    int first;
    int middle;
    int last;
};
ThreeLengths splitLength(int length, int nearBorder, int farBorder);

/// Draws the picture into the whole target and replaces what is there. Throws std::bad_alloc.
void drawNineParts(PixelView target, ConstPixelView source, const NineParts& parts);

/// The same for a part of a target of the size `whole`, which is too large to be made: the part that begins at `at`.
void drawNinePartsPart(PixelView part, ConstPixelView source, const NineParts& parts, Size whole, Point at);

} // namespace ambrel
