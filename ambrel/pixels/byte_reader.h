// Reading numbers out of bytes without ever leaving them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace ambrel {

/// Positions beyond the end read as 0; `isInside` tells whether they were.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::size_t size() const { return m_bytes.size(); }
    bool isInside(std::size_t at, std::size_t count) const
    {
        return at <= m_bytes.size() && count <= m_bytes.size() - at;
    }
    int u8(std::size_t at) const { return isInside(at, 1) ? m_bytes[at] : 0; }
    int u16le(std::size_t at) const { return u8(at) | u8(at + 1) << 8; }
    int u16be(std::size_t at) const { return u8(at) << 8 | u8(at + 1); }
    std::uint32_t u32le(std::size_t at) const
    {
        return static_cast<std::uint32_t>(u16le(at)) | static_cast<std::uint32_t>(u16le(at + 2)) << 16;
    }
    std::uint32_t u32be(std::size_t at) const
    {
        return static_cast<std::uint32_t>(u16be(at)) << 16 | static_cast<std::uint32_t>(u16be(at + 2));
    }

    template <std::size_t N>
    bool startsWith(const char (&text)[N], std::size_t at = 0) const
    {
        if (!isInside(at, N - 1))
            return false;
        for (std::size_t i = 0; i < N - 1; ++i)
            if (m_bytes[at + i] != static_cast<std::uint8_t>(text[i]))
                return false;
        return true;
    }

private:
    std::span<const std::uint8_t> m_bytes;
};

} // namespace ambrel
