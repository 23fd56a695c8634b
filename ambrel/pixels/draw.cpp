#include "ambrel/pixels/draw.h"

#include "ambrel/pixels/loops.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace ambrel {

Coverage coverageOf(ConstPixelView pixels)
{
    bool opaque = true;
    bool blank = true;
    for (int y = 0; y < pixels.height; ++y) {
        Pixel all = 0xFF000000u;
        Pixel any = 0;
        for (const Pixel* p = pixels.row(y); p != pixels.row(y) + pixels.width; ++p) {
            all &= *p;
            any |= *p;
        }
        opaque = opaque && all == 0xFF000000u;
        blank = blank && any == 0;
        if (!opaque && !blank)
            return Coverage::Mixed;
    }
    return blank ? Coverage::Blank : opaque ? Coverage::Opaque : Coverage::Mixed;
}

void fillRect(const Canvas& canvas, const Rect& rect, Pixel value)
{
    const Rect r = canvas.visible(rect);
    for (int y = r.top; y < r.bottom; ++y)
        loops().fill(canvas.at(r.left, y), static_cast<std::size_t>(r.width()), value);
}

void blendRect(const Canvas& canvas, const Rect& rect, Pixel colour)
{
    if (alphaOf(colour) == 255)
        return fillRect(canvas, rect, colour);
    const Rect r = canvas.visible(rect);
    for (int y = r.top; y < r.bottom; ++y)
        loops().blendColour(canvas.at(r.left, y), static_cast<std::size_t>(r.width()), colour);
}

namespace {

/// Calls row(out, source, count) for each visible row of a picture.
template <class RowFunction>
void forRows(const Canvas& canvas, Point at, ConstPixelView image, RowFunction&& row)
{
    const Rect r = canvas.visible(Rect::at(at, {image.width, image.height}));
    const auto count = static_cast<std::uint32_t>(r.right - r.left); // it lies inside the canvas
    for (int y = r.top; y < r.bottom; ++y)
        row(canvas.at(r.left, y), image.row(y - at.y) + (r.left - at.x), count);
}

} // namespace

void copyImage(const Canvas& canvas, Point at, ConstPixelView image)
{
    forRows(canvas, at, image, [](Pixel* out, const Pixel* source, std::size_t count) {
        std::memmove(out, source, count * sizeof(Pixel));
    });
}

void blendImage(const Canvas& canvas, Point at, ConstPixelView image, int opacity)
{
    drawImage(canvas, at, image, Coverage::Mixed, opacity);
}

void drawImage(const Canvas& canvas, Point at, ConstPixelView image, Coverage coverage, int opacity)
{
    const RowLoops& run = loops();
    if (coverage == Coverage::Blank || opacity <= 0)
        return;
    if (opacity < 255)
        forRows(canvas, at, image, [&](Pixel* out, const Pixel* source, std::size_t count) {
            run.blendWeakened(out, source, count, opacity);
        });
    else if (coverage == Coverage::Opaque)
        copyImage(canvas, at, image);
    else
        forRows(canvas, at, image, run.blend);
}

void blendMask(const Canvas& canvas, Point at, Size size, std::span<const std::uint8_t> mask, int stride, Pixel colour)
{
    const Rect r = canvas.visible(Rect::at(at, size));
    const RowLoops& run = loops();
    for (int y = r.top; y < r.bottom; ++y) {
        const auto offset = static_cast<std::size_t>(y - at.y) * stride + (r.left - at.x);
        run.blendMask(canvas.at(r.left, y), mask.data() + offset, static_cast<std::size_t>(r.width()), colour);
    }
}

void tileImage(const Canvas& canvas, const Rect& rect, ConstPixelView image, int opacity)
{
    if (image.isEmpty())
        return;
    const Canvas inside = canvas.clippedTo(rect);
    const Rect shown = inside.visible(rect);
    if (shown.isEmpty())
        return;
    const int firstX = rect.left + (shown.left - rect.left) / image.width * image.width;
    const int firstY = rect.top + (shown.top - rect.top) / image.height * image.height;
    for (int y = firstY; y < shown.bottom; y += image.height)
        for (int x = firstX; x < shown.right; x += image.width)
            blendImage(inside, {x, y}, image, opacity);
}

namespace {

/// Blends one pixel that is covered in part; coverage 0..1.
void blendPoint(const Canvas& canvas, const Rect& shown, int x, int y, Pixel colour, double coverage)
{
    if (coverage <= 0 || !shown.contains(Point{x, y}))
        return;
    Pixel& out = *canvas.at(x, y);
    out = over(weakened(colour, static_cast<int>(std::lround(std::min(coverage, 1.0) * 255))), out);
}

/// A slanted line as a capsule: each pixel's coverage is how far it lies inside the pen.
void drawSlantedLine(const Canvas& canvas, Point from, Point to, int penWidth, Pixel colour)
{
    const int margin = penWidth / 2 + 1;
    const Rect box =
        Rect{std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x) + 1, std::max(from.y, to.y) + 1}
            .inflated(margin);
    const Rect shown = canvas.visible(box);
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    const double halfPen = penWidth / 2.0;
    for (int y = shown.top; y < shown.bottom; ++y) {
        // Only the part of the row near the line is looked at.
        const double along = dy != 0 ? (y - from.y) / dy : 0;
        const double reach =
            std::abs(length / (dy != 0 ? dy : 1)) * (halfPen + 1) + std::abs(dx / (dy != 0 ? dy : 1)) + 2;
        const double middle = from.x + along * dx;
        const int left = static_cast<int>(std::max<double>(shown.left, std::floor(middle - reach)));
        const int right = static_cast<int>(std::min<double>(shown.right, std::ceil(middle + reach)));
        for (int x = left; x < right; ++x) {
            const double t = std::clamp(((x - from.x) * dx + (y - from.y) * dy) / (length * length), 0.0, 1.0);
            const double distance = std::hypot(x - from.x - t * dx, y - from.y - t * dy);
            blendPoint(canvas, shown, x, y, colour, halfPen + 0.5 - distance);
        }
    }
}

} // namespace

void drawLine(const Canvas& canvas, Point from, Point to, int penWidth, Pixel colour)
{
    const int width = std::clamp(penWidth, 1, 4096);
    const int before = (width - 1) / 2;
    const int left = std::min(from.x, to.x);
    const int top = std::min(from.y, to.y);
    if (from.y == to.y)
        blendRect(canvas, Rect::at({left, from.y - before}, {std::abs(to.x - from.x) + 1, width}), colour);
    else if (from.x == to.x)
        blendRect(canvas, Rect::at({from.x - before, top}, {width, std::abs(to.y - from.y) + 1}), colour);
    else
        drawSlantedLine(canvas, from, to, width, colour);
}

namespace {

/// How much of a pixel lies inside a rectangle with rounded corners, 0..1.
double roundedCoverage(const Rect& rect, double radius, int x, int y)
{
    const double r = std::min({radius, rect.width() / 2.0, rect.height() / 2.0});
    const double px = x + 0.5;
    const double py = y + 0.5;
    if (px < rect.left || px > rect.right || py < rect.top || py > rect.bottom)
        return 0;
    const double dx = std::max({rect.left + r - px, px - (rect.right - r), 0.0});
    const double dy = std::max({rect.top + r - py, py - (rect.bottom - r), 0.0});
    if (dx <= 0 || dy <= 0)
        return 1;
    return std::clamp(r + 0.5 - std::hypot(dx, dy), 0.0, 1.0);
}

} // namespace

void drawRing(const Canvas& canvas, const Rect& rect, int radius, int width, Pixel colour)
{
    if (rect.isEmpty() || width <= 0)
        return;
    const Rect inner = rect.inflated(-width);
    const int corner = std::max(std::max(radius, 0), width);
    // The straight sides, between the corners.
    const Rect sides[] = {{rect.left + corner, rect.top, rect.right - corner, rect.top + width},
                          {rect.left + corner, rect.bottom - width, rect.right - corner, rect.bottom},
                          {rect.left, rect.top + corner, rect.left + width, rect.bottom - corner},
                          {rect.right - width, rect.top + corner, rect.right, rect.bottom - corner}};
    const bool isTooSmall = rect.width() < 2 * corner || rect.height() < 2 * corner;
    if (!isTooSmall)
        for (const Rect& side : sides)
            blendRect(canvas, side, colour);
    const Rect shown = canvas.visible(rect);
    for (int y = shown.top; y < shown.bottom; ++y) {
        const bool isCornerRow = y < rect.top + corner || y >= rect.bottom - corner;
        for (int x = shown.left; x < shown.right; ++x) {
            const bool isCornerColumn = x < rect.left + corner || x >= rect.right - corner;
            if (!isTooSmall && !(isCornerRow && isCornerColumn)) {
                if (isCornerRow) // the rest of the row up to the right corner was drawn as a side
                    x = std::max(x, std::min(shown.right, rect.right - corner) - 1);
                else
                    break;
                continue;
            }
            const double hole = inner.isEmpty() ? 0 : roundedCoverage(inner, std::max(radius - width, 0), x, y);
            blendPoint(canvas, shown, x, y, colour, roundedCoverage(rect, radius, x, y) - hole);
        }
    }
}

void makeOpaque(const Canvas& canvas, const Rect& rect)
{
    const Rect r = canvas.visible(rect);
    for (int y = r.top; y < r.bottom; ++y) {
        Pixel* row = canvas.at(r.left, y);
        for (int x = 0; x < r.width(); ++x)
            row[x] |= 0xFF000000u;
    }
}

} // namespace ambrel
