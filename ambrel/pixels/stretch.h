// Scaling pictures.
#pragma once

#include "ambrel/pixels/surface.h"

namespace ambrel {

/// How pixels between pixels are found.
enum class StretchQuality {
    Nearest, // repeats or drops pixels
    Smooth,  // linear between neighbours when growing, the mean of what is covered when shrinking
};

/// Scales the whole source onto the whole target and replaces what is there. An empty source makes the target
/// transparent. Pixels outside the source never bleed in. Throws std::bad_alloc.
void stretchImage(PixelView target, ConstPixelView source, StretchQuality quality = StretchQuality::Smooth);

/// The part of such a target that begins at `at`, for targets too large to be made whole: the source is scaled onto
/// `whole`, of which the pixels of `part` are written. Throws std::bad_alloc.
void stretchImagePart(PixelView part, ConstPixelView source, Size whole, Point at);

} // namespace ambrel
