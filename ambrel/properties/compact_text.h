// A text for objects that exist in great numbers.
#pragma once

#include "ambrel/properties/small_blocks.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <utility>

namespace ambrel {

/// One pointer wide, in a small block of its exact length; any characters. For the user-interface thread only.
class CompactText {
public:
    CompactText() noexcept = default;
    /// Throws std::bad_alloc.
    explicit CompactText(std::wstring_view text)
    {
        if (text.empty())
            return;
        if (text.size() > kMost)
            throw std::bad_alloc();
        const auto length = static_cast<Length>(text.size());
        m_block = allocateBlock(blockSize(length));
        std::memcpy(m_block, &length, sizeof length);
        std::memcpy(static_cast<Length*>(m_block) + 1, text.data(), length * sizeof(wchar_t));
    }
    CompactText(CompactText&& other) noexcept : m_block(std::exchange(other.m_block, nullptr)) {}
    CompactText& operator=(CompactText&& other) noexcept
    {
        std::swap(m_block, other.m_block);
        return *this;
    }
    ~CompactText()
    {
        if (m_block)
            releaseBlock(m_block, blockSize(length()));
    }

    /// Valid until another text is assigned.
    std::wstring_view view() const noexcept
    {
        return m_block ? std::wstring_view(reinterpret_cast<const wchar_t*>(static_cast<const Length*>(m_block) + 1),
                                           length())
                       : std::wstring_view();
    }

private:
    using Length = std::uint32_t;
    static constexpr std::size_t kMost = std::numeric_limits<Length>::max() / sizeof(wchar_t) - sizeof(Length);

    static std::size_t blockSize(Length length) noexcept { return sizeof length + length * sizeof(wchar_t); }
    Length length() const noexcept
    {
        Length length = 0;
        std::memcpy(&length, m_block, sizeof length);
        return length;
    }

    void* m_block = nullptr; // the length and the characters
};

} // namespace ambrel
