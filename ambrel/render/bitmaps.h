// Bitmaps and icons of the system as surfaces, and back.
#pragma once

#include "ambrel/pixels/surface.h"
#include "frame/platform/handles.h"

namespace ambrel {

/// The pixels of a bitmap. One with 32 bits whose alpha is not zero everywhere is taken as premultiplied; every other
/// is opaque. Empty for what is no bitmap. Throws std::bad_alloc.
Surface surfaceOfBitmap(HBITMAP bitmap);

/// An icon or cursor with its mask or alpha. Empty for what is no icon. Throws std::bad_alloc.
Surface surfaceOfIcon(HICON icon);

/// A new 32-bit bitmap section with premultiplied alpha that the caller owns; null when the system refuses.
morvane::UniqueBitmap bitmapOf(ConstPixelView pixels) noexcept;

} // namespace ambrel
