#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace ambrel::skin {

/// Reads numbers from untrusted bytes. A read beyond the end gives 0 and is remembered; nothing is ever read outside.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    std::size_t size() const { return m_bytes.size(); }
    bool has(std::uint64_t offset, std::uint64_t count) const
    {
        return offset <= m_bytes.size() && count <= m_bytes.size() - offset;
    }

    /// True once a read went beyond the end.
    bool overran() const { return m_overran; }

    std::uint32_t byteAt(std::uint64_t offset) const { return number(offset, 1, false); }
    std::uint32_t little16(std::uint64_t offset) const { return number(offset, 2, false); }
    std::uint32_t little32(std::uint64_t offset) const { return number(offset, 4, false); }
    std::uint32_t big16(std::uint64_t offset) const { return number(offset, 2, true); }
    std::uint32_t big32(std::uint64_t offset) const { return number(offset, 4, true); }

    /// The bytes, empty when any of them lies beyond the end.
    std::span<const std::uint8_t> part(std::uint64_t offset, std::uint64_t count) const
    {
        return reach(offset, count) ? m_bytes.subspan(offset, count) : std::span<const std::uint8_t>();
    }
    std::string_view text(std::uint64_t offset, std::uint64_t count) const
    {
        const auto bytes = part(offset, count);
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

private:
    bool reach(std::uint64_t offset, std::uint64_t count) const
    {
        const bool inside = has(offset, count);
        m_overran = m_overran || !inside;
        return inside;
    }

    std::uint32_t number(std::uint64_t offset, unsigned count, bool bigEndian) const
    {
        if (!reach(offset, count))
            return 0;
        std::uint32_t value = 0;
        for (unsigned i = 0; i < count; ++i)
            value = value << 8 | m_bytes[offset + (bigEndian ? i : count - 1 - i)];
        return value;
    }

    std::span<const std::uint8_t> m_bytes;
    mutable bool m_overran = false;
};

} // namespace ambrel::skin
