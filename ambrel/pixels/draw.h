// Clipped drawing of rectangles, pictures and masks. Every rectangle may lie anywhere; only what is inside `clip` and
// inside the target is touched.
#pragma once

#include "ambrel/pixels/surface.h"

#include <cstdint>
#include <span>

namespace ambrel {

/// Where drawing goes: pixels, where they lie in the window's coordinates, and what of them may be touched.
struct Canvas {
    PixelView pixels;
    Point origin; // window coordinates of the first pixel
    Rect clip;    // in window coordinates

    /// The rectangle cut to what may be touched, in window coordinates.
    Rect visible(const Rect& rect) const
    {
        return rect.intersection(clip).intersection(pixels.bounds().shifted(origin.x, origin.y));
    }

    /// The first of the pixels at a point that is visible.
    Pixel* at(int x, int y) const { return pixels.row(y - origin.y) + (x - origin.x); }

    Canvas clippedTo(const Rect& rect) const { return {pixels, origin, clip.intersection(rect)}; }
};

/// Sets every pixel, alpha included.
void fillRect(const Canvas& canvas, const Rect& rect, Pixel value);

/// Draws a colour over what is there.
void blendRect(const Canvas& canvas, const Rect& rect, Pixel colour);

/// Copies a picture's pixels, alpha included, its first pixel to `at`.
void copyImage(const Canvas& canvas, Point at, ConstPixelView image);

/// Draws a picture over what is there; opacity 0..255.
void blendImage(const Canvas& canvas, Point at, ConstPixelView image, int opacity = 255);

/// As above, faster when the picture's coverage is known.
void drawImage(const Canvas& canvas, Point at, ConstPixelView image, Coverage coverage, int opacity);

/// Draws a colour through a mask of coverages (`stride` bytes a row).
void blendMask(const Canvas& canvas, Point at, Size size, std::span<const std::uint8_t> mask, int stride, Pixel colour);

/// Repeats a picture from the rectangle's left top corner.
void tileImage(const Canvas& canvas, const Rect& rect, ConstPixelView image, int opacity = 255);

/// A straight line from one point to another, both ends drawn, as wide as the pen; edges of slanted ones are smooth.
void drawLine(const Canvas& canvas, Point from, Point to, int penWidth, Pixel colour);

/// The outline of a rectangle with rounded corners, `width` pixels wide and inside the rectangle.
void drawRing(const Canvas& canvas, const Rect& rect, int radius, int width, Pixel colour);

/// Sets alpha to opaque, for targets whose drawing went through functions that do not know alpha.
void makeOpaque(const Canvas& canvas, const Rect& rect);

} // namespace ambrel
