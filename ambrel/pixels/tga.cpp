#include "ambrel/pixels/tga.h"

#include "ambrel/pixels/byte_reader.h"

namespace ambrel {

namespace {

/// Hands out one pixel after the other, unpacking runs.
class TgaPixels {
public:
    TgaPixels(const ByteReader& in, std::size_t start, std::size_t bytesPerPixel, bool isPacked, bool hasAlpha)
        : m_in(in), m_at(start), m_bytesPerPixel(bytesPerPixel), m_isPacked(isPacked), m_hasAlpha(hasAlpha)
    {
    }

    bool next(Pixel& pixel)
    {
        if (m_isPacked && m_left == 0 && !beginPacket())
            return false;
        const bool isRepeat = m_isPacked && m_isRun && m_hasPixel;
        if (!isRepeat && !read())
            return false;
        m_hasPixel = true;
        --m_left;
        pixel = m_pixel;
        return true;
    }

private:
    bool beginPacket()
    {
        if (!m_in.isInside(m_at, 1))
            return false;
        const int head = m_in.u8(m_at++);
        m_isRun = (head & 0x80) != 0;
        m_left = (head & 0x7F) + 1;
        m_hasPixel = false;
        return true;
    }

    bool read()
    {
        if (!m_in.isInside(m_at, m_bytesPerPixel))
            return false;
        const int alpha = m_hasAlpha ? m_in.u8(m_at + 3) : 255;
        m_pixel = premultiplied(alpha, m_in.u8(m_at + 2), m_in.u8(m_at + 1), m_in.u8(m_at));
        m_at += m_bytesPerPixel;
        return true;
    }

    ByteReader m_in;
    std::size_t m_at;
    std::size_t m_bytesPerPixel;
    bool m_isPacked;
    bool m_hasAlpha;
    bool m_isRun = false;
    bool m_hasPixel = false;
    int m_left = 0;
    Pixel m_pixel = 0;
};

/// The fewest bytes that so many pixels take: a run holds up to 128 of them.
std::size_t leastBytes(std::size_t pixels, std::size_t bytesPerPixel, bool isPacked)
{
    constexpr std::size_t kLongestRun = 128;
    return isPacked ? (pixels + kLongestRun - 1) / kLongestRun * (1 + bytesPerPixel) : pixels * bytesPerPixel;
}

Surface decode(const ByteReader& in, TgaPixels pixels)
{
    constexpr int kTopDown = 0x20;
    constexpr int kFromTheRight = 0x10;
    const int flags = in.u8(17);
    Surface surface({in.u16le(12), in.u16le(14)});
    const Size size = surface.size();
    for (int y = 0; y < size.height; ++y) {
        Pixel* row = surface.view().row((flags & kTopDown) != 0 ? y : size.height - 1 - y);
        for (int x = 0; x < size.width; ++x)
            if (!pixels.next(row[(flags & kFromTheRight) != 0 ? size.width - 1 - x : x]))
                return {};
    }
    return surface;
}

} // namespace

Surface decodeTga(std::span<const std::uint8_t> bytes)
{
    constexpr std::size_t kHeader = 18;
    constexpr int kPacked = 10;
    const ByteReader in(bytes);
    const std::size_t start = kHeader + static_cast<std::size_t>(in.u8(0));
    const auto bytesPerPixel = static_cast<std::size_t>(in.u8(16)) / 8;
    const bool isPacked = in.u8(2) == kPacked;
    const auto count = static_cast<std::size_t>(in.u16le(12)) * static_cast<std::size_t>(in.u16le(14));
    const bool isKnown = bytesPerPixel == 3 || bytesPerPixel == 4;
    if (!isKnown || !in.isInside(start, leastBytes(count, bytesPerPixel, isPacked)))
        return {}; // a few bytes that claim to be many get no memory
    const bool mayHaveAlpha = bytesPerPixel == 4;
    Surface surface = decode(in, {in, start, bytesPerPixel, isPacked, mayHaveAlpha});
    if (mayHaveAlpha && coverageOf(surface.view()) == Coverage::Blank) // the fourth byte was never filled in
        surface = decode(in, {in, start, bytesPerPixel, isPacked, false});
    return surface;
}

} // namespace ambrel
