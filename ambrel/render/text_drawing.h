// Texts in rectangles.
#pragma once

#include "ambrel/render/glyph_font.h"

namespace ambrel {

/// The format that a combination of the system's DT_ flags describes.
TextFormat formatOfFlags(long flags) noexcept;
long flagsOfFormat(const TextFormat& format) noexcept;

/// Draws a text into a rectangle and cuts it there. Throws std::bad_alloc.
void drawText(const Canvas& canvas, const GlyphFont& font, std::wstring_view text, const Rect& rect,
              const TextFormat& format, Pixel colour);

enum class TextHalo { Thick, Soft };

/// Draws what lies around a text: its shape thicker, or softer, by so many pixels, which reach beyond the rectangle.
/// Throws std::bad_alloc.
void drawHalo(const Canvas& canvas, const GlyphFont& font, std::wstring_view text, const Rect& rect,
              const TextFormat& format, Pixel colour, TextHalo halo, int radius);

/// The extent that drawText would need within a rectangle of this size. Throws std::bad_alloc.
Size measureText(const GlyphFont& font, std::wstring_view text, Size room, const TextFormat& format);

} // namespace ambrel
