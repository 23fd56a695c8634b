#include "ambrel/pixels/tga.h"

#include "ambrel/pixels/byte_reader.h"

namespace ambrel {

namespace {

/// Hands out one pixel after the other, unpacking runs.
class TgaPixels {
public:
    TgaPixels(const ByteReader& in, std::size_t start, std::size_t bytesPerPixel, bool isPacked)
        : m_in(in), m_at(start), m_bytesPerPixel(bytesPerPixel), m_isPacked(isPacked)
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
        const int alpha = m_bytesPerPixel == 4 ? m_in.u8(m_at + 3) : 255;
        m_pixel = premultiplied(alpha, m_in.u8(m_at + 2), m_in.u8(m_at + 1), m_in.u8(m_at));
        m_at += m_bytesPerPixel;
        return true;
    }

    ByteReader m_in;
    std::size_t m_at;
    std::size_t m_bytesPerPixel;
    bool m_isPacked;
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

} // namespace

Surface decodeTga(std::span<const std::uint8_t> bytes)
{
    constexpr std::size_t kHeader = 18;
    constexpr int kPacked = 10;
    constexpr int kTopDown = 0x20;
    const ByteReader in(bytes);
    const Size size{in.u16le(12), in.u16le(14)};
    const std::size_t start = kHeader + static_cast<std::size_t>(in.u8(0));
    const auto bytesPerPixel = static_cast<std::size_t>(in.u8(16)) / 8;
    const bool isPacked = in.u8(2) == kPacked;
    const std::size_t count = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    if (!in.isInside(start, leastBytes(count, bytesPerPixel, isPacked)))
        return {}; // a few bytes that claim to be many get no memory
    Surface surface(size);
    TgaPixels pixels(in, start, bytesPerPixel, isPacked);
    const int height = surface.size().height;
    for (int y = 0; y < height; ++y) {
        Pixel* row = surface.view().row((in.u8(17) & kTopDown) != 0 ? y : height - 1 - y);
        for (int x = 0; x < surface.size().width; ++x)
            if (!pixels.next(row[x]))
                return {};
    }
    return surface;
}

} // namespace ambrel
