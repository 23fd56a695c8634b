// What kind of picture bytes are and how large it is, told from their first bytes, before any decoder sees them.
#pragma once

#include "ambrel/pixels/surface.h"

#include <cstdint>
#include <span>

namespace ambrel {

/// The values are those of VEX_PICTURE_TYPE.
enum class ImageFormat { Unknown = 0, Png = 1, Bmp = 2, Jpeg = 3, Gif = 4, Ico = 5, Tga = 6 };

struct ImageHeader {
    ImageFormat format = ImageFormat::Unknown;
    Size size; // 0, 0 when the header does not tell
};

/// Looks at the content only; names and extensions do not count. Unknown for anything that is not clearly a picture.
ImageHeader readImageHeader(std::span<const std::uint8_t> bytes);

/// The largest picture of an icon or cursor file and of those the one with the most colours: its place in the
/// directory.
int bestIconImage(std::span<const std::uint8_t> bytes);

/// A cursor file with the same pictures as an icon file, which is all that decoders read; other bytes as they are.
/// Throws std::bad_alloc.
std::vector<std::uint8_t> asIconFile(std::span<const std::uint8_t> bytes);

/// Where that picture of a cursor file points, in its pixels; the left top corner in any other file.
Point cursorHotSpot(std::span<const std::uint8_t> bytes);

} // namespace ambrel
