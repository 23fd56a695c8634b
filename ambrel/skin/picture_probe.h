#pragma once

#include "ambrel/skin/errors.h"

#include <cstdint>
#include <span>
#include <string>

namespace ambrel::skin {

/// Kinds of pictures; the values are those of the framework's VEX_PICTURE_TYPE.
enum class PictureKind { Png = 1, Bmp = 2, Jpeg = 3, Gif = 4, Icon = 5 };

/// What a picture's headers say, without decoding it.
struct PictureInfo {
    PictureKind kind = PictureKind::Png;
    std::int32_t width = 0; ///< pixels; for icons the largest image's
    std::int32_t height = 0;
    std::int32_t frames = 1; ///< of an animated GIF; images of an icon

    bool operator==(const PictureInfo&) const = default;
};

/// Tells a picture's kind by its bytes (never by its name) and walks its structure: sizes within the limits, nothing
/// cut off. Cursors count as icons. `name` stands in errors.
Outcome<PictureInfo> probePicture(std::span<const std::uint8_t> bytes, const std::string& name);

} // namespace ambrel::skin
