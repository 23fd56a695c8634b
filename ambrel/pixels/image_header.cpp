#include "ambrel/pixels/image_header.h"

#include "ambrel/pixels/byte_reader.h"
#include "ambrel/pixels/tga.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ambrel {

namespace {

int toSide(std::uint32_t value)
{
    return static_cast<int>(std::min<std::uint32_t>(value, std::numeric_limits<int>::max()));
}

/// A height may be negative in a bitmap: rows then run from the top.
int toSideOfSigned(std::uint32_t value)
{
    const auto number = static_cast<std::int64_t>(static_cast<std::int32_t>(value));
    return static_cast<int>(std::min<std::int64_t>(number < 0 ? -number : number, std::numeric_limits<int>::max()));
}

Size bmpSize(const ByteReader& in)
{
    constexpr std::uint32_t kCoreHeader = 12;
    if (in.u32le(14) == kCoreHeader)
        return {in.u16le(18), in.u16le(20)};
    return {toSideOfSigned(in.u32le(18)), toSideOfSigned(in.u32le(22))};
}

/// Walks the segments up to the frame header.
Size jpegSize(const ByteReader& in)
{
    std::size_t at = 2;
    while (in.isInside(at, 4) && in.u8(at) == 0xFF) {
        const int marker = in.u8(at + 1);
        if (marker == 0xFF) { // padding
            ++at;
            continue;
        }
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame)
            return {in.u16be(at + 7), in.u16be(at + 5)};
        const int length = in.u16be(at + 2);
        if (length < 2)
            return {};
        at += 2 + static_cast<std::size_t>(length);
    }
    return {};
}

constexpr std::size_t kIconDirectory = 6;
constexpr std::size_t kIconEntry = 16;

bool isCursor(const ByteReader& in)
{
    constexpr int kCursor = 2;
    return in.u16le(0) == 0 && in.u16le(2) == kCursor;
}

/// One entry of an icon file's directory; a stored 0 means 256 pixels.
struct IconEntry {
    Size size;
    int depth = 0; // bits for each pixel
};

IconEntry iconEntry(const ByteReader& in, std::size_t at)
{
    const auto side = [&](std::size_t place) { return in.u8(place) == 0 ? 256 : in.u8(place); };
    const std::size_t picture = in.u32le(at + 12);
    const int told = isCursor(in) ? 0 : in.u16le(at + 6); // cursors have their hot spot there
    const bool isPng = in.startsWith("\x89PNG", picture);
    return {{side(at), side(at + 1)}, told != 0 ? told : isPng ? 32 : in.u16le(picture + 14)};
}

/// Calls `function(index, entry)` for each entry that is inside the bytes.
template <class Function>
void forEachIcon(const ByteReader& in, Function&& function)
{
    const int count = in.u16le(4);
    for (int i = 0; i < count; ++i) {
        const std::size_t at = kIconDirectory + kIconEntry * static_cast<std::size_t>(i);
        if (!in.isInside(at, kIconEntry))
            return;
        function(i, iconEntry(in, at));
    }
}

Size icoSize(const ByteReader& in)
{
    Size largest;
    forEachIcon(in, [&](int, const IconEntry& entry) {
        largest = {std::max(largest.width, entry.size.width), std::max(largest.height, entry.size.height)};
    });
    return largest;
}

bool isIcon(const ByteReader& in)
{
    const int kind = in.u16le(2); // 1 icon, 2 cursor
    return in.isInside(0, 22) && in.u16le(0) == 0 && (kind == 1 || kind == 2) && in.u16le(4) > 0 && in.u8(9) == 0;
}

} // namespace

ImageHeader readImageHeader(std::span<const std::uint8_t> bytes)
{
    const ByteReader in(bytes);
    if (in.startsWith("\x89PNG\r\n\x1A\n") && in.startsWith("IHDR", 12))
        return {ImageFormat::Png, {toSide(in.u32be(16)), toSide(in.u32be(20))}};
    if (in.startsWith("GIF87a") || in.startsWith("GIF89a"))
        return {ImageFormat::Gif, {in.u16le(6), in.u16le(8)}};
    if (in.startsWith("\xFF\xD8\xFF"))
        return {ImageFormat::Jpeg, jpegSize(in)};
    if (in.startsWith("BM") && in.isInside(0, 26))
        return {ImageFormat::Bmp, bmpSize(in)};
    if (isIcon(in))
        return {ImageFormat::Ico, icoSize(in)};
    if (const auto size = tgaSize(bytes))
        return {ImageFormat::Tga, *size};
    return {};
}

int bestIconImage(std::span<const std::uint8_t> bytes)
{
    int best = 0;
    std::pair<int, int> most; // pixels, then depth
    forEachIcon(ByteReader(bytes), [&](int index, const IconEntry& entry) {
        const std::pair worth{entry.size.width * entry.size.height, entry.depth};
        if (worth > most) {
            most = worth;
            best = index;
        }
    });
    return best;
}

std::vector<std::uint8_t> asIconFile(std::span<const std::uint8_t> bytes)
{
    constexpr std::uint8_t kIcon = 1;
    constexpr std::uint8_t kPlanes = 1;
    std::vector<std::uint8_t> icon(bytes.begin(), bytes.end());
    const ByteReader in(bytes);
    if (!isCursor(in))
        return icon;
    icon[2] = kIcon;
    forEachIcon(in, [&](int index, const IconEntry& entry) {
        const std::size_t at = kIconDirectory + kIconEntry * static_cast<std::size_t>(index);
        icon[at + 4] = kPlanes;
        icon[at + 5] = 0;
        icon[at + 6] = static_cast<std::uint8_t>(entry.depth);
        icon[at + 7] = 0;
    });
    return icon;
}

Point cursorHotSpot(std::span<const std::uint8_t> bytes)
{
    const ByteReader in(bytes);
    if (!isCursor(in))
        return {};
    const std::size_t at = kIconDirectory + kIconEntry * static_cast<std::size_t>(bestIconImage(bytes));
    return {in.u16le(at + 4), in.u16le(at + 6)};
}

} // namespace ambrel
