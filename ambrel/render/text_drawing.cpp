#include "ambrel/render/text_drawing.h"

#include <algorithm>

namespace ambrel {

TextFormat formatOfFlags(long flags) noexcept
{
    TextFormat format;
    format.horizontal = (flags & DT_CENTER) != 0  ? TextAlign::Centre
                        : (flags & DT_RIGHT) != 0 ? TextAlign::Far
                                                  : TextAlign::Near;
    format.vertical = (flags & DT_VCENTER) != 0  ? TextAlign::Centre
                      : (flags & DT_BOTTOM) != 0 ? TextAlign::Far
                                                 : TextAlign::Near;
    format.isSingleLine = (flags & DT_SINGLELINE) != 0;
    format.wraps = (flags & DT_WORDBREAK) != 0;
    format.isRightToLeft = (flags & DT_RTLREADING) != 0;
    if ((flags & DT_NOPREFIX) == 0)
        format.prefix = (flags & DT_HIDEPREFIX) != 0 ? HotkeyPrefix::Hidden : HotkeyPrefix::Underlined;
    if ((flags & DT_PATH_ELLIPSIS) != 0)
        format.trimming = TextTrimming::EllipsisPath;
    else if ((flags & DT_WORD_ELLIPSIS) != 0)
        format.trimming = TextTrimming::EllipsisWord;
    else if ((flags & DT_END_ELLIPSIS) != 0)
        format.trimming = TextTrimming::EllipsisCharacter;
    return format;
}

long flagsOfFormat(const TextFormat& format) noexcept
{
    constexpr long kHorizontal[] = {DT_LEFT, DT_CENTER, DT_RIGHT};
    constexpr long kVertical[] = {DT_TOP, DT_VCENTER, DT_BOTTOM};
    constexpr long kTrimming[] = {0, 0, 0, DT_END_ELLIPSIS, DT_WORD_ELLIPSIS, DT_PATH_ELLIPSIS};
    constexpr long kPrefix[] = {DT_NOPREFIX, 0, DT_HIDEPREFIX};
    return kHorizontal[static_cast<int>(format.horizontal)] | kVertical[static_cast<int>(format.vertical)] |
           kTrimming[static_cast<int>(format.trimming)] | kPrefix[static_cast<int>(format.prefix)] |
           (format.isSingleLine ? DT_SINGLELINE
            : format.wraps      ? DT_WORDBREAK
                                : 0) |
           (format.isRightToLeft ? DT_RTLREADING : 0);
}

namespace {

int alignedStart(int start, int room, int length, TextAlign align)
{
    switch (align) {
    case TextAlign::Centre:
        return start + (room - length) / 2;
    case TextAlign::Far:
        return start + room - length;
    default:
        return start;
    }
}

/// Right-to-left texts begin at the other side.
TextAlign effectiveAlign(const TextFormat& format)
{
    if (!format.isRightToLeft || format.horizontal == TextAlign::Centre)
        return format.horizontal;
    return format.horizontal == TextAlign::Near ? TextAlign::Far : TextAlign::Near;
}

void drawLines(const Canvas& canvas, const GlyphFont& font, const TextLayout& layout, const Rect& rect,
               const TextFormat& format, Pixel colour)
{
    const TextAlign align = effectiveAlign(format);
    int top = alignedStart(rect.top, rect.height(), layout.size.height, format.vertical);
    for (const TextLine& line : layout.lines) {
        const int left = alignedStart(rect.left, rect.width(), line.width, align);
        const int baseline = top + font.ascent();
        font.drawLine(canvas, left, baseline, line.text, format.isRightToLeft, colour);
        if (line.underlined >= 0)
            blendRect(canvas,
                      Rect::at({left + line.underlineLeft, baseline + font.underlineOffset()},
                               {line.underlineWidth, font.lineThickness()}),
                      colour);
        top += font.lineHeight();
    }
}

/// Everything but its text and its room that the mask of a text depends on.
unsigned bitsOf(const TextFormat& format)
{
    return static_cast<unsigned>(format.horizontal) | static_cast<unsigned>(format.vertical) << 2 |
           static_cast<unsigned>(format.trimming) << 4 | static_cast<unsigned>(format.prefix) << 7 |
           static_cast<unsigned>(format.isSingleLine) << 9 | static_cast<unsigned>(format.isRightToLeft) << 10 |
           static_cast<unsigned>(format.isVertical) << 11 | static_cast<unsigned>(format.wraps) << 29;
}

/// Draws the text lying down and turns it clockwise into its place.
void drawTurned(const Canvas& canvas, const GlyphFont& font, std::wstring_view text, const Rect& rect,
                const TextFormat& format, Pixel colour)
{
    const Size lyingSize{rect.height(), rect.width()};
    const auto turned = [&] {
        Surface lying(lyingSize);
        const Rect whole = lying.view().bounds();
        TextFormat horizontal = format;
        horizontal.isVertical = false;
        drawText({lying.view(), {}, whole}, font, text, whole, horizontal, packPixel(255, 255, 255, 255));
        return turnedMaskOf(lying.view());
    };
    if (isWorthKeeping(lyingSize))
        font.mask({text, lyingSize, bitsOf(format)}, turned).draw(canvas, rect.topLeft(), colour);
    else
        turned().draw(canvas, rect.topLeft(), colour);
}

} // namespace

void drawText(const Canvas& canvas, const GlyphFont& font, std::wstring_view text, const Rect& rect,
              const TextFormat& format, Pixel colour)
{
    const Canvas inside = canvas.clippedTo(rect);
    if (text.empty() || inside.visible(rect).isEmpty())
        return;
    if (format.isVertical)
        return drawTurned(inside, font, text, rect, format, colour);
    drawLines(inside, font, font.layOut(text, rect.width(), format), rect, format, colour);
}

void drawHalo(const Canvas& canvas, const GlyphFont& font, std::wstring_view text, const Rect& rect,
              const TextFormat& format, Pixel colour, TextHalo halo, int radius)
{
    constexpr int kMostPixels = 16;
    const int by = std::clamp(radius, 1, kMostPixels);
    if (text.empty() || rect.isEmpty() || canvas.visible(rect.inflated(by)).isEmpty())
        return;
    const auto surrounding = [&] {
        Surface aside(rect.size());
        const Rect whole = aside.view().bounds();
        drawText({aside.view(), {}, whole}, font, text, whole, format, packPixel(255, 255, 255, 255));
        const TextMask mask = maskOf(aside.view(), {});
        return halo == TextHalo::Thick ? thickened(mask, by) : softened(mask, by);
    };
    const unsigned how = bitsOf(format) | static_cast<unsigned>(by) << 12 | (static_cast<unsigned>(halo) + 1) << 20;
    if (isWorthKeeping(rect.size()))
        font.mask({text, rect.size(), how}, surrounding).draw(canvas, rect.topLeft(), colour);
    else
        surrounding().draw(canvas, rect.topLeft(), colour);
}

Size measureText(const GlyphFont& font, std::wstring_view text, Size room, const TextFormat& format)
{
    TextFormat untrimmed = format;
    untrimmed.trimming = TextTrimming::None;
    const Size size = font.layOut(text, format.isVertical ? room.height : room.width, untrimmed).size;
    return format.isVertical ? Size{size.height, size.width} : size;
}

} // namespace ambrel
