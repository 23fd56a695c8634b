// Bitmap files. Decoded here and not by the platform: every depth, order, mask and packing has one meaning on every
// system, and no bytes lead astray.
#pragma once

#include "ambrel/pixels/surface.h"

#include <cstdint>
#include <span>

namespace ambrel {

/// 1, 4, 8, 16, 24 and 32 bits, plain, run-length encoded or with masks, rows from either end. Alpha counts where the
/// file names a mask for it. Empty when the bytes are no such file, end too early or contradict themselves. Throws
/// std::bad_alloc.
Surface decodeBmp(std::span<const std::uint8_t> bytes);

} // namespace ambrel
