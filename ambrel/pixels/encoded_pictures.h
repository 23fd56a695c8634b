// Pictures as files hold them, made byte by byte for tests.
#pragma once

#include "base/geometry.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ambrel::test {

using morvane::Point;
using Bytes = std::vector<std::uint8_t>;

inline void addLittle(Bytes& bytes, std::uint32_t value, int count)
{
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

/// A bitmap file of kBmpWidth by kBmpHeight pixels, whose pixel at x, y is red, green, blue or white by (x + y) % 4;
/// with one bit it is red or green by (x + y) % 2.
struct BmpKind {
    const char* name;
    int depth;
    int compression = 0;         // as in the header: 0 plain, 1 packed bytes, 2 packed halves, 3 with masks
    bool isTopDown = false;      // a negative height
    bool isOldForm = false;      // the header of 12 bytes
    std::uint32_t alphaMask = 0; // not 0: the header that can name it, and white is half transparent
};
inline constexpr int kBmpWidth = 5;
inline constexpr int kBmpHeight = 3;

std::span<const BmpKind> everyBmpKind();
Bytes bmpFile(const BmpKind& kind);

/// One picture of an icon file.
struct IconImage {
    int side;
    int depth;            // 4 or 32
    std::uint32_t colour; // 0xAARRGGBB, straight alpha; with 4 bits the alpha is not kept
};
Bytes icoFile(const std::vector<IconImage>& images);

/// The same pictures as a cursor file, each with the place it points to.
Bytes cursorFile(const std::vector<IconImage>& images, const std::vector<Point>& hotSpots);

} // namespace ambrel::test
