// How an animated picture of this runtime tells its frames to the image-section properties.
#pragma once

#include "host/typed_properties.h"

namespace ambrel {

/// Implemented by pictures beside IVexPicture, asked for with kIidPictureFrames.
struct PictureFrames : IUnknown {
    /// Null when the picture is not animated. Valid while the picture keeps its content.
    virtual const morvane::PictureFrameTable* frameTable() noexcept = 0;
};

inline constexpr IID kIidPictureFrames = {0xA7B0D2C4, 0x3E11, 0x4B8B, {0x90, 0x5F, 0x6D, 0x1A, 0x77, 0xC2, 0x0E, 0x58}};

} // namespace ambrel
