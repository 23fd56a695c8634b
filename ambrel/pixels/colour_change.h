// Changing a picture's colours: a transparent key colour, colourising, tinting.
#pragma once

#include "ambrel/pixels/surface.h"

namespace ambrel {

/// Makes every opaque pixel of this colour (0x00BBGGRR) transparent.
void applyColourKey(PixelView pixels, std::uint32_t colourRef);

/// Moves colours towards a hue and a saturation, keeping how light each pixel is; alpha stays.
struct Colourise {
    int hue = 0;        // 0..359 degrees
    int saturation = 0; // 0..255
    int blend = 255;    // 0 leaves the picture as it is, 255 replaces hue and saturation altogether

    /// The hue and saturation of a colour (0x00BBGGRR).
    static Colourise of(std::uint32_t colourRef);
    friend bool operator==(const Colourise&, const Colourise&) = default;
};
void applyColourise(PixelView pixels, const Colourise& change);

/// Adds to each channel (-255..255 each, in straight colours); alpha stays.
struct ChannelShift {
    int red = 0;
    int green = 0;
    int blue = 0;
};
void applyShift(PixelView pixels, const ChannelShift& shift);

/// A copy whose colours are not multiplied with alpha, as files and the system's icons have them. Throws
/// std::bad_alloc.
Surface withStraightAlpha(ConstPixelView pixels);

/// The stored colour that means "leave the colours alone".
inline constexpr std::uint32_t kNoColourise = 0xFFFFFFFFu;

} // namespace ambrel
