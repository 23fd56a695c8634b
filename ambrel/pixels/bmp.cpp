#include "ambrel/pixels/bmp.h"

#include "ambrel/pixels/byte_reader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>

namespace ambrel {

namespace {

enum class Packing : std::uint32_t { None = 0, Bytes = 1, Halves = 2, Masks = 3, MasksWithAlpha = 6 };

constexpr std::size_t kInfo = 14; // where the second header begins
constexpr std::uint32_t kOldHeader = 12;

struct Header {
    std::size_t pixels = 0;
    std::uint32_t length = 0; // of the second header
    Size size;
    bool isTopDown = false;
    int depth = 0;
    Packing packing = Packing::None;
    std::uint32_t coloursUsed = 0;

    bool isOld() const { return length == kOldHeader; }
    bool hasMasks() const { return packing == Packing::Masks || packing == Packing::MasksWithAlpha; }
    bool isRuns() const { return packing == Packing::Bytes || packing == Packing::Halves; }
    std::size_t stride() const { return (static_cast<std::size_t>(size.width) * depth + 31) / 32 * 4; }
    /// The row of the picture that comes at this place in the file.
    int row(int inFile) const { return isTopDown ? inFile : size.height - 1 - inFile; }
};

bool isSensible(const Header& h)
{
    constexpr std::uint32_t kUsualHeader = 40;
    constexpr std::uint32_t kLongestHeader = 124;
    if (!h.isOld() && (h.length < kUsualHeader || h.length > kLongestHeader))
        return false;
    if (h.size.isEmpty() || !Surface::isAllowed(h.size))
        return false;
    switch (h.packing) {
    case Packing::None:
        return h.depth == 1 || h.depth == 4 || h.depth == 8 || h.depth == 16 || h.depth == 24 || h.depth == 32;
    case Packing::Bytes:
        return h.depth == 8 && !h.isTopDown;
    case Packing::Halves:
        return h.depth == 4 && !h.isTopDown;
    case Packing::Masks:
    case Packing::MasksWithAlpha:
        return h.depth == 16 || h.depth == 32;
    }
    return false;
}

std::optional<Header> readHeader(const ByteReader& in)
{
    if (!in.startsWith("BM") || !in.isInside(0, kInfo + kOldHeader))
        return std::nullopt;
    Header h;
    h.pixels = in.u32le(10);
    h.length = in.u32le(kInfo);
    if (h.isOld()) {
        h.size = {in.u16le(18), in.u16le(20)};
        h.depth = in.u16le(24);
    } else {
        const auto height = static_cast<std::int32_t>(in.u32le(22));
        h.isTopDown = height < 0;
        const std::int64_t rows = h.isTopDown ? -std::int64_t{height} : height;
        const std::uint32_t width = in.u32le(18);
        if (width > Surface::kMaxSide || rows > Surface::kMaxSide)
            return std::nullopt;
        h.size = {static_cast<int>(width), static_cast<int>(rows)};
        h.depth = in.u16le(28);
        h.packing = static_cast<Packing>(in.u32le(30));
        h.coloursUsed = in.u32le(46);
    }
    return isSensible(h) ? std::optional(h) : std::nullopt;
}

/// The colours of an indexed picture; those that the file leaves out are black.
class Palette {
public:
    Palette(const ByteReader& in, const Header& h)
    {
        m_colours.fill(0xFF000000u);
        const std::size_t entry = h.isOld() ? 3 : 4;
        const std::size_t start = kInfo + h.length;
        const std::size_t most = std::size_t{1} << h.depth;
        const std::size_t count = h.coloursUsed == 0 ? most : std::min<std::size_t>(most, h.coloursUsed);
        for (std::size_t i = 0; i < count && start + (i + 1) * entry <= h.pixels; ++i) {
            const std::size_t at = start + i * entry;
            m_colours[i] = packPixel(255, in.u8(at + 2), in.u8(at + 1), in.u8(at));
        }
    }

    Pixel operator[](int index) const { return m_colours[static_cast<std::size_t>(index & 0xFF)]; }

private:
    std::array<Pixel, 256> m_colours;
};

/// One channel of a pixel of 16 or 32 bits.
class Channel {
public:
    explicit Channel(std::uint32_t mask) : m_mask(mask), m_shift(mask == 0 ? 0 : std::countr_zero(mask)) {}

    bool isThere() const { return m_mask != 0; }
    int of(std::uint32_t value) const
    {
        const std::uint64_t most = m_mask >> m_shift;
        return most == 0 ? 0 : static_cast<int>(((value & m_mask) >> m_shift) * 255 / most);
    }

private:
    std::uint32_t m_mask;
    int m_shift;
};

struct Channels {
    Channel red;
    Channel green;
    Channel blue;
    Channel alpha;

    Pixel of(std::uint32_t value) const
    {
        return premultiplied(alpha.isThere() ? alpha.of(value) : 255, red.of(value), green.of(value), blue.of(value));
    }
};

Channels channelsOf(const ByteReader& in, const Header& h)
{
    constexpr std::size_t kMasks = kInfo + 40; // inside a longer header and behind a short one
    constexpr std::uint32_t kHeaderWithAlpha = 56;
    if (h.hasMasks()) {
        const bool namesAlpha = h.packing == Packing::MasksWithAlpha || h.length >= kHeaderWithAlpha;
        return {Channel(in.u32le(kMasks)), Channel(in.u32le(kMasks + 4)), Channel(in.u32le(kMasks + 8)),
                Channel(namesAlpha ? in.u32le(kMasks + 12) : 0)};
    }
    if (h.depth == 16)
        return {Channel(0x7C00), Channel(0x03E0), Channel(0x001F), Channel(0)};
    return {Channel(0xFF0000), Channel(0xFF00), Channel(0xFF), Channel(0)};
}

int indexAt(const ByteReader& in, std::size_t row, int x, int depth)
{
    const int perByte = 8 / depth;
    const int shift = (perByte - 1 - x % perByte) * depth; // from the most significant bits
    return (in.u8(row + static_cast<std::size_t>(x / perByte)) >> shift) & ((1 << depth) - 1);
}

bool holdsAllRows(const ByteReader& in, const Header& h)
{
    const std::size_t lastRow = (static_cast<std::size_t>(h.size.width) * h.depth + 7) / 8; // may come without filling
    return in.isInside(h.pixels, h.stride() * (static_cast<std::size_t>(h.size.height) - 1) + lastRow);
}

/// `pixelAt(row, x)` gives a pixel of the row that begins at that place in the file.
template <class PixelAt>
Surface decodePlain(const ByteReader& in, const Header& h, PixelAt&& pixelAt)
{
    if (!holdsAllRows(in, h))
        return {};
    Surface surface(h.size);
    for (int y = 0; y < h.size.height; ++y) {
        const std::size_t row = h.pixels + h.stride() * static_cast<std::size_t>(y);
        Pixel* out = surface.view().row(h.row(y));
        for (int x = 0; x < h.size.width; ++x)
            out[x] = pixelAt(row, x);
    }
    return surface;
}

Surface decodeIndexed(const ByteReader& in, const Header& h)
{
    const Palette palette(in, h);
    return decodePlain(in, h, [&](std::size_t row, int x) { return palette[indexAt(in, row, x, h.depth)]; });
}

Surface decodeColours(const ByteReader& in, const Header& h)
{
    const Channels channels = channelsOf(in, h);
    const std::size_t step = static_cast<std::size_t>(h.depth) / 8;
    return decodePlain(in, h, [&](std::size_t row, int x) {
        const std::size_t at = row + step * static_cast<std::size_t>(x);
        return channels.of(step == 2 ? static_cast<std::uint32_t>(in.u16le(at)) : in.u32le(at));
    });
}

/// Unpacks runs; what lies outside the picture is left out, what is never told has the first colour.
class Runs {
public:
    Runs(const ByteReader& in, const Header& h) : m_in(in), m_header(h), m_palette(in, h), m_at(h.pixels) {}

    Surface decode()
    {
        constexpr std::size_t kMostPixelsPerByte = 128; // a run of two bytes holds 255
        const auto pixels = static_cast<std::size_t>(m_header.size.width) * m_header.size.height;
        if (!m_in.isInside(m_at, (pixels + kMostPixelsPerByte - 1) / kMostPixelsPerByte))
            return {}; // a few bytes that claim to be many get no memory
        m_surface = Surface(m_header.size);
        for (int y = 0; y < m_header.size.height; ++y)
            std::fill_n(m_surface.view().row(y), m_header.size.width, m_palette[0]);
        while (m_in.isInside(m_at, 2)) {
            const int count = m_in.u8(m_at);
            const int value = m_in.u8(m_at + 1);
            m_at += 2;
            if (count > 0)
                repeat(count, value);
            else if (value == kEndOfPicture)
                return std::move(m_surface);
            else if (!command(value))
                return {};
        }
        const bool hasLastPixel =
            m_y >= m_header.size.height || (m_y == m_header.size.height - 1 && m_x >= m_header.size.width);
        return hasLastPixel ? std::move(m_surface) : Surface(); // some writers leave out the end
    }

private:
    static constexpr int kEndOfLine = 0;
    static constexpr int kEndOfPicture = 1;
    static constexpr int kJump = 2;

    bool hasHalves() const { return m_header.packing == Packing::Halves; }

    void put(int index)
    {
        if (m_x < m_header.size.width && m_y < m_header.size.height)
            m_surface.view().row(m_header.row(m_y))[m_x] = m_palette[index];
        ++m_x;
    }

    void repeat(int count, int value)
    {
        for (int i = 0; i < count; ++i)
            put(!hasHalves() ? value : i % 2 == 0 ? value >> 4 : value & 15);
    }

    bool command(int value)
    {
        if (value == kEndOfLine) {
            m_x = 0;
            ++m_y;
            return true;
        }
        if (value != kJump)
            return literal(value);
        if (!m_in.isInside(m_at, 2))
            return false;
        m_x = std::min(m_x + m_in.u8(m_at), m_header.size.width);
        m_y = std::min(m_y + m_in.u8(m_at + 1), m_header.size.height);
        m_at += 2;
        return true;
    }

    /// Pixels one by one, filled up to an even number of bytes.
    bool literal(int count)
    {
        const auto length = static_cast<std::size_t>(hasHalves() ? (count + 1) / 2 : count);
        if (!m_in.isInside(m_at, length))
            return false;
        for (int i = 0; i < count; ++i)
            put(hasHalves() ? indexAt(m_in, m_at, i, 4) : m_in.u8(m_at + static_cast<std::size_t>(i)));
        m_at += length + length % 2;
        return true;
    }

    const ByteReader& m_in;
    const Header& m_header;
    Palette m_palette;
    std::size_t m_at;
    int m_x = 0;
    int m_y = 0;
    Surface m_surface;
};

} // namespace

Surface decodeBmp(std::span<const std::uint8_t> bytes)
{
    const ByteReader in(bytes);
    const auto header = readHeader(in);
    if (!header)
        return {};
    if (header->isRuns())
        return Runs(in, *header).decode();
    return header->depth <= 8 ? decodeIndexed(in, *header) : decodeColours(in, *header);
}

} // namespace ambrel
