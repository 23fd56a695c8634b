#include "ambrel/pixels/tga.h"

#include "ambrel/pixels/byte_reader.h"

namespace ambrel {

namespace {

enum class TgaKind { Palette = 1, TrueColour = 2, Grey = 3 };

/// What the first 18 bytes say, with the places of what follows them: a comment, the palette, the pixels.
struct TgaHeader {
    TgaKind kind = TgaKind::TrueColour;
    bool isPacked = false;
    Size size;
    int depth = 0; // bits of a pixel in the file: of its colour, or of its place in the palette
    int alphaBits = 0;
    bool isTopDown = false;
    bool isFromTheRight = false;
    int firstIndex = 0; // that stands for the palette's first colour
    std::size_t colours = 0;
    int colourDepth = 0; // of the palette
    std::size_t paletteStart = 0;
    std::size_t pixelStart = 0;

    std::size_t bytesPerPixel() const { return static_cast<std::size_t>(depth + 7) / 8; }
};

bool isColourDepth(int depth)
{
    return depth == 15 || depth == 16 || depth == 24 || depth == 32;
}

/// Newer files name the format in their last bytes.
bool isSigned(const ByteReader& in)
{
    constexpr std::size_t kSignature = 18; // with its final zero
    return in.size() >= kSignature && in.startsWith("TRUEVISION-XFILE.", in.size() - kSignature);
}

bool makesSense(const TgaHeader& h, bool hasPalette)
{
    if (hasPalette && (!isColourDepth(h.colourDepth) || h.colours == 0))
        return false;
    switch (h.kind) {
    case TgaKind::Palette:
        return hasPalette && (h.depth == 8 || h.depth == 16);
    case TgaKind::TrueColour:
        return isColourDepth(h.depth);
    case TgaKind::Grey:
        return h.depth == 8 || h.depth == 16;
    }
    return false;
}

std::optional<TgaHeader> readHeader(const ByteReader& in)
{
    constexpr std::size_t kHeader = 18;
    constexpr int kPacked = 8;
    constexpr int kAlphaBits = 0x0F;
    constexpr int kFromTheRight = 0x10;
    constexpr int kTopDown = 0x20;
    constexpr int kInterleaved = 0xC0;
    const int paletteType = in.u8(1);
    const int flags = in.u8(17);
    TgaHeader h;
    h.isPacked = (in.u8(2) & kPacked) != 0;
    h.kind = static_cast<TgaKind>(in.u8(2) & ~kPacked);
    h.size = {in.u16le(12), in.u16le(14)};
    h.depth = in.u8(16);
    h.alphaBits = flags & kAlphaBits;
    h.isTopDown = (flags & kTopDown) != 0;
    h.isFromTheRight = (flags & kFromTheRight) != 0;
    h.paletteStart = kHeader + static_cast<std::size_t>(in.u8(0));
    if (paletteType == 1) {
        h.firstIndex = in.u16le(3);
        h.colours = static_cast<std::size_t>(in.u16le(5));
        h.colourDepth = in.u8(7);
    }
    h.pixelStart = h.paletteStart + h.colours * (static_cast<std::size_t>(h.colourDepth + 7) / 8);
    const bool saysNothingOdd = paletteType == 1 || (in.u32le(3) == 0 && in.u8(7) == 0) || isSigned(in);
    if (!in.isInside(0, kHeader) || paletteType > 1 || !saysNothingOdd || h.size.isEmpty() || h.alphaBits > 8 ||
        (flags & kInterleaved) != 0 || !makesSense(h, paletteType == 1))
        return std::nullopt;
    return h;
}

/// Reads colours as files hold them, wherever they stand.
class TgaColours {
public:
    TgaColours(const ByteReader& in, const TgaHeader& header, bool usesAlpha)
        : m_in(in), m_header(header), m_usesAlpha(usesAlpha)
    {
    }

    /// The colour of the pixel whose bytes stand here.
    Pixel pixelAt(std::size_t at) const
    {
        switch (m_header.kind) {
        case TgaKind::Palette:
            return paletteColour(m_header.depth == 8 ? m_in.u8(at) : m_in.u16le(at));
        case TgaKind::Grey: {
            const int light = m_in.u8(at);
            return premultiplied(m_header.depth == 16 ? alpha(m_in.u8(at + 1)) : 255, light, light, light);
        }
        case TgaKind::TrueColour:
            break;
        }
        return colourAt(at, m_header.depth);
    }

private:
    int alpha(int stored) const { return m_usesAlpha ? stored : 255; }

    /// A place that the palette does not have is black.
    Pixel paletteColour(int index) const
    {
        const auto place = static_cast<std::size_t>(index - m_header.firstIndex);
        if (index < m_header.firstIndex || place >= m_header.colours)
            return 0xFF000000u;
        const auto bytes = static_cast<std::size_t>(m_header.colourDepth + 7) / 8;
        return colourAt(m_header.paletteStart + place * bytes, m_header.colourDepth);
    }

    Pixel colourAt(std::size_t at, int depth) const
    {
        if (depth <= 16) {
            const int bits = m_in.u16le(at);
            const auto channel = [bits](int shift) {
                const int five = bits >> shift & 31;
                return five << 3 | five >> 2;
            };
            const bool mayBeTransparent = depth == 16 && m_header.alphaBits == 1;
            return premultiplied(mayBeTransparent ? alpha(bits >> 15 != 0 ? 255 : 0) : 255, channel(10), channel(5),
                                 channel(0));
        }
        return premultiplied(depth == 32 ? alpha(m_in.u8(at + 3)) : 255, m_in.u8(at + 2), m_in.u8(at + 1), m_in.u8(at));
    }

    const ByteReader& m_in;
    const TgaHeader& m_header;
    bool m_usesAlpha;
};

/// Hands out one pixel after the other, unpacking runs.
class TgaPixels {
public:
    TgaPixels(const ByteReader& in, const TgaHeader& header, bool usesAlpha)
        : m_in(in), m_header(header), m_colours(in, header, usesAlpha), m_at(header.pixelStart)
    {
    }

    bool next(Pixel& pixel)
    {
        if (m_header.isPacked && m_left == 0 && !beginPacket())
            return false;
        const bool isRepeat = m_header.isPacked && m_isRun && m_hasPixel;
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
        if (!m_in.isInside(m_at, m_header.bytesPerPixel()))
            return false;
        m_pixel = m_colours.pixelAt(m_at);
        m_at += m_header.bytesPerPixel();
        return true;
    }

    const ByteReader& m_in;
    const TgaHeader& m_header;
    TgaColours m_colours;
    std::size_t m_at;
    bool m_isRun = false;
    bool m_hasPixel = false;
    int m_left = 0;
    Pixel m_pixel = 0;
};

/// The fewest bytes that the pixels take: a run holds up to 128 of them.
std::size_t leastBytes(const TgaHeader& h)
{
    constexpr std::size_t kLongestRun = 128;
    const std::size_t pixels = static_cast<std::size_t>(h.size.width) * static_cast<std::size_t>(h.size.height);
    return h.isPacked ? (pixels + kLongestRun - 1) / kLongestRun * (1 + h.bytesPerPixel()) : pixels * h.bytesPerPixel();
}

Surface decode(const ByteReader& in, const TgaHeader& h, bool usesAlpha)
{
    TgaPixels pixels(in, h, usesAlpha);
    Surface surface(h.size);
    const Size size = surface.size();
    for (int y = 0; y < size.height; ++y) {
        Pixel* row = surface.view().row(h.isTopDown ? y : size.height - 1 - y);
        for (int x = 0; x < size.width; ++x)
            if (!pixels.next(row[h.isFromTheRight ? size.width - 1 - x : x]))
                return {};
    }
    return surface;
}

} // namespace

std::optional<Size> tgaSize(std::span<const std::uint8_t> bytes)
{
    const auto header = readHeader(ByteReader(bytes));
    return header ? std::optional(header->size) : std::nullopt;
}

Surface decodeTga(std::span<const std::uint8_t> bytes)
{
    const ByteReader in(bytes);
    const auto header = readHeader(in);
    if (!header || !in.isInside(header->pixelStart, leastBytes(*header)))
        return {}; // a few bytes that claim to be many get no memory
    Surface surface = decode(in, *header, true);
    if (coverageOf(surface.view()) == Coverage::Blank) // alpha was never filled in
        surface = decode(in, *header, false);
    return surface;
}

} // namespace ambrel
