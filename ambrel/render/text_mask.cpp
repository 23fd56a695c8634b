#include "ambrel/render/text_mask.h"

#include <algorithm>

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

} // namespace

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
