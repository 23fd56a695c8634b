#include "ambrel/pixels/encoded_pictures.h"

#include <array>

namespace ambrel::test {

namespace {

constexpr std::array<std::uint32_t, 4> kColours = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF};
constexpr std::uint32_t kHalfWhite = 0x80FFFFFF;
constexpr int kFileHeader = 14;

int colourIndex(const BmpKind& kind, int x, int y)
{
    return (x + y) % (kind.depth == 1 ? 2 : 4);
}

std::uint32_t maskOf(const BmpKind& kind, int shift)
{
    // The order differs from the usual one, so that the masks must be heeded.
    return kind.depth == 16 ? std::array{0x001Fu, 0x07E0u, 0xF800u}[shift] : 0xFFu << (8 * shift);
}

std::uint32_t packed(const BmpKind& kind, int index)
{
    const std::uint32_t colour = kind.alphaMask != 0 && index == 3 ? kHalfWhite : kColours[index];
    const auto bits = [&](int shift, int count) { return (colour >> shift & 0xFF) >> (8 - count); };
    if (kind.depth == 16 && kind.compression == 3)
        return bits(16, 5) | bits(8, 6) << 5 | bits(0, 5) << 11;
    if (kind.depth == 16)
        return bits(16, 5) << 10 | bits(8, 5) << 5 | bits(0, 5);
    if (kind.depth == 32 && kind.compression == 3)
        return bits(16, 8) | bits(8, 8) << 8 | bits(0, 8) << 16 | (kind.alphaMask != 0 ? bits(24, 8) << 24 : 0);
    return kind.depth == 32 ? colour & 0xFFFFFF : colour;
}

/// A row without packing: bits from the most significant one, filled to four bytes.
Bytes plainRow(const BmpKind& kind, int y)
{
    Bytes row;
    int free = 0; // bits left in the last byte
    for (int x = 0; x < kBmpWidth; ++x) {
        const int index = colourIndex(kind, x, y);
        if (kind.depth >= 16) {
            addLittle(row, packed(kind, index), kind.depth / 8);
            continue;
        }
        if (free == 0) {
            row.push_back(0);
            free = 8;
        }
        free -= kind.depth;
        row.back() = static_cast<std::uint8_t>(row.back() | index << free);
    }
    row.resize((row.size() + 3) / 4 * 4);
    return row;
}

/// One run of a single pixel, the rest as they are, the end of the line.
Bytes packedRow(const BmpKind& kind, int y)
{
    const auto index = [&](int x) { return static_cast<std::uint8_t>(colourIndex(kind, x, y)); };
    if (kind.compression == 1)
        return {1, index(0), 0, 4, index(1), index(2), index(3), index(4), 0, 0};
    const auto pair = [](int a, int b) { return static_cast<std::uint8_t>(a << 4 | b); };
    return {1, pair(index(0), 0), 0, 4, pair(index(1), index(2)), pair(index(3), index(4)), 0, 0};
}

void addInfoHeader(Bytes& out, const BmpKind& kind, std::uint32_t pixelBytes)
{
    if (kind.isOldForm) {
        addLittle(out, 12, 4);
        addLittle(out, kBmpWidth, 2);
        addLittle(out, kBmpHeight, 2);
        addLittle(out, 1, 2);
        addLittle(out, static_cast<std::uint32_t>(kind.depth), 2);
        return;
    }
    constexpr std::uint32_t kWithAlphaMask = 108;
    addLittle(out, kind.alphaMask != 0 ? kWithAlphaMask : 40, 4);
    addLittle(out, kBmpWidth, 4);
    addLittle(out, static_cast<std::uint32_t>(kind.isTopDown ? -kBmpHeight : kBmpHeight), 4);
    addLittle(out, 1, 2);
    addLittle(out, static_cast<std::uint32_t>(kind.depth), 2);
    addLittle(out, static_cast<std::uint32_t>(kind.compression), 4);
    addLittle(out, pixelBytes, 4);
    for (int i = 0; i < 4; ++i) // resolution, number of colours
        addLittle(out, 0, 4);
    if (kind.compression == 3)
        for (int i = 0; i < 3; ++i)
            addLittle(out, maskOf(kind, i), 4);
    if (kind.alphaMask != 0) {
        addLittle(out, kind.alphaMask, 4);
        addLittle(out, 0x73524742, 4);
        out.resize(out.size() + 48);
    }
}

void addPalette(Bytes& out, const BmpKind& kind)
{
    for (int i = 0; i < 1 << kind.depth; ++i)
        addLittle(out, i < 4 ? kColours[i] & 0xFFFFFF : 0, kind.isOldForm ? 3 : 4);
}

} // namespace

std::span<const BmpKind> everyBmpKind()
{
    static constexpr BmpKind kBmpKinds[] = {
        {"1 bit", 1},
        {"4 bits", 4},
        {"4 bits packed", 4, 2},
        {"8 bits", 8},
        {"8 bits packed", 8, 1},
        {"16 bits", 16},
        {"16 bits with masks", 16, 3},
        {"24 bits", 24},
        {"24 bits from the top", 24, 0, true},
        {"32 bits", 32},
        {"32 bits with masks", 32, 3},
        {"32 bits with alpha", 32, 3, false, false, 0xFF000000u},
        {"8 bits, old header", 8, 0, false, true},
        {"24 bits, old header", 24, 0, false, true},
        {"8 bits from the top", 8, 0, true},
    };
    return kBmpKinds;
}

Bytes bmpFile(const BmpKind& kind)
{
    Bytes pixels;
    for (int i = 0; i < kBmpHeight; ++i) {
        const int y = kind.isTopDown ? i : kBmpHeight - 1 - i;
        const bool isPacked = kind.compression == 1 || kind.compression == 2;
        const Bytes row = isPacked ? packedRow(kind, y) : plainRow(kind, y);
        pixels.insert(pixels.end(), row.begin(), row.end());
    }
    if (kind.compression == 1 || kind.compression == 2)
        pixels.insert(pixels.end(), {0, 1}); // the end
    Bytes info;
    addInfoHeader(info, kind, static_cast<std::uint32_t>(pixels.size()));
    if (kind.depth <= 8)
        addPalette(info, kind);
    const auto start = static_cast<std::uint32_t>(kFileHeader + info.size());
    Bytes file = {'B', 'M'};
    addLittle(file, start + static_cast<std::uint32_t>(pixels.size()), 4);
    addLittle(file, 0, 4);
    addLittle(file, start, 4);
    file.insert(file.end(), info.begin(), info.end());
    file.insert(file.end(), pixels.begin(), pixels.end());
    return file;
}

namespace {

/// A bitmap without a file header, of one colour; its height counts the mask, which covers nothing.
Bytes iconBitmap(const IconImage& image)
{
    const auto side = static_cast<std::uint32_t>(image.side);
    const auto stride = [&](int bits) { return (side * static_cast<std::uint32_t>(bits) + 31) / 32 * 4; };
    Bytes out;
    addLittle(out, 40, 4);
    addLittle(out, side, 4);
    addLittle(out, side * 2, 4);
    addLittle(out, 1, 2);
    addLittle(out, static_cast<std::uint32_t>(image.depth), 2);
    out.resize(out.size() + 24);
    if (image.depth == 4) {
        addLittle(out, image.colour & 0xFFFFFF, 4);
        out.resize(out.size() + 15 * 4 + stride(4) * side); // every pixel has the first colour
    } else {
        for (std::uint32_t i = 0; i < side * side; ++i)
            addLittle(out, image.colour, 4);
    }
    out.resize(out.size() + stride(1) * side);
    return out;
}

} // namespace

Bytes icoFile(const std::vector<IconImage>& images)
{
    constexpr std::size_t kEntry = 16;
    Bytes file;
    addLittle(file, 0, 2);
    addLittle(file, 1, 2);
    addLittle(file, static_cast<std::uint32_t>(images.size()), 2);
    Bytes pictures;
    const std::size_t start = 6 + kEntry * images.size();
    for (const IconImage& image : images) {
        const Bytes bitmap = iconBitmap(image);
        addLittle(file, static_cast<std::uint32_t>(image.side), 1);
        addLittle(file, static_cast<std::uint32_t>(image.side), 1);
        addLittle(file, image.depth == 4 ? 16 : 0, 1);
        addLittle(file, 0, 1);
        addLittle(file, 1, 2);
        addLittle(file, static_cast<std::uint32_t>(image.depth), 2);
        addLittle(file, static_cast<std::uint32_t>(bitmap.size()), 4);
        addLittle(file, static_cast<std::uint32_t>(start + pictures.size()), 4);
        pictures.insert(pictures.end(), bitmap.begin(), bitmap.end());
    }
    file.insert(file.end(), pictures.begin(), pictures.end());
    return file;
}

Bytes cursorFile(const std::vector<IconImage>& images, const std::vector<Point>& hotSpots)
{
    Bytes file = icoFile(images);
    file[2] = 2;
    for (std::size_t i = 0; i < images.size(); ++i) {
        const std::size_t at = 6 + 16 * i + 4;
        file[at] = static_cast<std::uint8_t>(hotSpots[i].x);
        file[at + 1] = 0;
        file[at + 2] = static_cast<std::uint8_t>(hotSpots[i].y);
        file[at + 3] = 0;
    }
    return file;
}

} // namespace ambrel::test
