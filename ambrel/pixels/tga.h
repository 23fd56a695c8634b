// Truevision pictures, which the platform does not decode.
#pragma once

#include "ambrel/pixels/surface.h"

#include <cstdint>
#include <optional>
#include <span>

namespace ambrel {

/// The size that the bytes' header tells when they are such a picture. The format has no signature at its start, so
/// only headers in which every field makes sense count.
std::optional<Size> tgaSize(std::span<const std::uint8_t> bytes);

/// Pictures with a palette, true-colour ones with 15 to 32 bits and grey ones, plain or run-length encoded. Empty for
/// anything else and when the bytes end too early. Throws std::bad_alloc.
Surface decodeTga(std::span<const std::uint8_t> bytes);

} // namespace ambrel
