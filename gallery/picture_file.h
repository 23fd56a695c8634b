// Pictures of pages as PNG files.
#pragma once

#include "base/geometry.h"

#include <cstdint>
#include <string>
#include <vector>

namespace gallery {

/// Pixels 0xAARRGGBB, premultiplied, top row first.
struct Picture {
    morvane::Size size;
    std::vector<std::uint32_t> pixels;
};

/// Writes an opaque picture over `background`. False when the file cannot be written.
bool writePng(const Picture& picture, const std::wstring& path);

} // namespace gallery
