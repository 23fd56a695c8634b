// Truevision pictures, which the platform does not decode.
#pragma once

#include "ambrel/pixels/surface.h"

#include <cstdint>
#include <span>

namespace ambrel {

/// True-colour pictures with 24 or 32 bits, plain or run-length encoded. Empty for other depths and when the bytes end
/// too early. Throws std::bad_alloc.
Surface decodeTga(std::span<const std::uint8_t> bytes);

} // namespace ambrel
