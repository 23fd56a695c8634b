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

/// One of the nine parts in the target: its place there may reach beyond the pixels that are asked for.
struct Piece {
    PixelView seen;
    Size whole;
    Point at; // of the first seen pixel in the piece
};

Piece pieceOf(PixelView target, Point targetAt, const Rect& place)
{
    const Rect inTarget = place.shifted(-targetAt.x, -targetAt.y);
    const Rect seen = inTarget.intersection(target.bounds());
    return {target.part(inTarget), place.size(), seen.topLeft() - inTarget.topLeft()};
}

void repeat(const Piece& piece, ConstPixelView source)
{
    const PixelView target = piece.seen;
    const int firstX = piece.at.x % source.width;
    for (int y = 0; y < target.height; ++y) {
        const Pixel* from = source.row((piece.at.y + y) % source.height);
        Pixel* out = target.row(y);
        int skipped = firstX;
        for (int x = 0; x < target.width; skipped = 0) {
            const int count = std::min(source.width - skipped, target.width - x);
            std::memcpy(out + x, from + skipped, static_cast<std::size_t>(count) * sizeof(Pixel));
            x += count;
        }
    }
}

void stretch(const Piece& piece, ConstPixelView source)
{
    const bool isWhole = piece.whole == Size{piece.seen.width, piece.seen.height};
    if (isWhole)
        stretchImage(piece.seen, source);
    else
        stretchImagePart(piece.seen, source, piece.whole, piece.at);
}

/// A part that repeats is first brought to the size of its tile.
void drawPart(const Piece& piece, ConstPixelView source, bool isStretched, Size tile)
{
    if (piece.seen.isEmpty())
        return;
    if (isStretched || source.isEmpty())
        return stretch(piece, source);
    const Size size{std::max(1, tile.width), std::max(1, tile.height)};
    if (size == Size{source.width, source.height})
        return repeat(piece, source);
    Surface scaled(size);
    stretchImage(scaled.view(), source);
    if (!scaled.isEmpty())
        repeat(piece, scaled.view());
}

} // namespace

void drawNineParts(PixelView target, ConstPixelView source, const NineParts& parts)
{
    drawNinePartsPart(target, source, parts, {target.width, target.height}, {});
}

void drawNinePartsPart(PixelView part, ConstPixelView source, const NineParts& parts, Size whole, Point at)
{
    if (part.isEmpty())
        return;
    Span columns[3];
    Span rows[3];
    const Borders& s = parts.sourceBorders;
    const Borders& t = parts.targetBorders;
    splitAxis(source.width, whole.width, s.left, s.right, t.left, t.right, columns);
    splitAxis(source.height, whole.height, s.top, s.bottom, t.top, t.bottom, rows);
    const PartStretch& k = parts.stretch;
    const bool stretches[3][3] = {{true, k.top, true}, {k.left, k.client, k.right}, {true, k.bottom, true}};
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            const Rect place = Rect::at({columns[c].to, rows[r].to}, {columns[c].toLength, rows[r].toLength});
            const ConstPixelView from =
                source.part(Rect::at({columns[c].from, rows[r].from}, {columns[c].fromLength, rows[r].fromLength}));
            const auto tileLength = [&](int length) {
                return morvane::scaled(length, parts.tileNumerator, parts.tileDenominator);
            };
            const Size tile{c == 1 ? tileLength(from.width) : place.width(),
                            r == 1 ? tileLength(from.height) : place.height()};
            drawPart(pieceOf(part, at, place), from, stretches[r][c], tile);
        }
    }
}

} // namespace ambrel
