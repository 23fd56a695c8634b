// How an image section of this runtime tells the image-section properties of the images that lie in it.
#pragma once

#include "base/geometry.h"
#include "host/host.h"

namespace ambrel {

/// Implemented by image sections beside IVexImageBase, asked for with kIidSectionImages.
struct SectionImages : IUnknown {
    virtual int imageCount() const noexcept = 0;
    /// At least 1. Throws std::bad_alloc.
    virtual void setImageCount(int count) = 0;
    /// Of one of them, in pixels of the 100 percent picture.
    virtual morvane::Size imageSize() const noexcept = 0;
};

inline constexpr IID kIidSectionImages = {0x6E40B1D9, 0x8A27, 0x4C6E, {0xB3, 0x14, 0x5D, 0xF7, 0x02, 0x9C, 0x48, 0xEB}};

} // namespace ambrel
