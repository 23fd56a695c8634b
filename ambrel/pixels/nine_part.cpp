#include "ambrel/pixels/nine_part.h"

#include "base/rounding.h"

#include <algorithm>
#include <cstring>

namespace ambrel {

ThreeLengths splitLength(int length, int nearBorder, int farBorder)
{
    const int whole = std::max(length, 0);
    const std::int64_t near = std::max(nearBorder, 0);
    const std::int64_t far = std::max(farBorder, 0);
    if (near + far <= whole)
        return {static_cast<int>(near), static_cast<int>(whole - near - far), static_cast<int>(far)};
    const int nearShare = static_cast<int>((near * whole + (near + far) / 2) / (near + far));
    return {nearShare, 0, whole - nearShare};
}

namespace {

/// One of the nine parts: where it comes from and goes to, along one axis.
struct Span {
    int from;
    int fromLength;
    int to;
    int toLength;
};

void splitAxis(int sourceLength, int targetLength, int sourceNear, int sourceFar, int targetNear, int targetFar,
               Span (&spans)[3])
{
    const ThreeLengths s = splitLength(sourceLength, sourceNear, sourceFar);
    const ThreeLengths t = splitLength(targetLength, s.first > 0 ? targetNear : 0, s.last > 0 ? targetFar : 0);
    spans[0] = {0, s.first, 0, t.first};
    spans[1] = {s.first, s.middle, t.first, t.middle};
    if (s.middle == 0 && t.middle > 0) // borders cover the whole picture: its innermost pixels fill the middle
        spans[1] = {std::max(0, s.first - 1), std::min(1, sourceLength), t.first, t.middle};
    spans[2] = {s.first + s.middle, s.last, t.first + t.middle, t.last};
}

void repeat(PixelView target, ConstPixelView source)
{
    for (int y = 0; y < target.height; ++y) {
        const Pixel* from = source.row(y % source.height);
        Pixel* out = target.row(y);
        for (int x = 0; x < target.width; x += source.width)
            std::memcpy(out + x, from,
                        static_cast<std::size_t>(std::min(source.width, target.width - x)) * sizeof(Pixel));
    }
}

/// A part that repeats is first brought to the size of its tile.
void drawPart(PixelView target, ConstPixelView source, bool stretch, Size tile)
{
    if (target.isEmpty())
        return;
    if (stretch || source.isEmpty())
        return stretchImage(target, source);
    const Size size{std::max(1, tile.width), std::max(1, tile.height)};
    if (size == Size{source.width, source.height})
        return repeat(target, source);
    Surface scaled(size);
    stretchImage(scaled.view(), source);
    if (!scaled.isEmpty())
        repeat(target, scaled.view());
}

} // namespace

void drawNineParts(PixelView target, ConstPixelView source, const NineParts& parts)
{
    if (target.isEmpty())
        return;
    Span columns[3];
    Span rows[3];
    const Borders& s = parts.sourceBorders;
    const Borders& t = parts.targetBorders;
    splitAxis(source.width, target.width, s.left, s.right, t.left, t.right, columns);
    splitAxis(source.height, target.height, s.top, s.bottom, t.top, t.bottom, rows);
    const PartStretch& k = parts.stretch;
    const bool stretches[3][3] = {{true, k.top, true}, {k.left, k.client, k.right}, {true, k.bottom, true}};
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            const PixelView out =
                target.part(Rect::at({columns[c].to, rows[r].to}, {columns[c].toLength, rows[r].toLength}));
            const ConstPixelView from =
                source.part(Rect::at({columns[c].from, rows[r].from}, {columns[c].fromLength, rows[r].fromLength}));
            const auto tileLength = [&](int length) {
                return morvane::scaled(length, parts.tileNumerator, parts.tileDenominator);
            };
            const Size tile{c == 1 ? tileLength(from.width) : out.width, r == 1 ? tileLength(from.height) : out.height};
            drawPart(out, from, stretches[r][c], tile);
        }
    }
}

} // namespace ambrel
