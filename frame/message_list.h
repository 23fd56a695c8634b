// The window messages that a control asked for.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <span>

namespace morvane {

/// A handful of messages in the order in which they were added. Every control has one, so it takes two words.
class MessageList {
public:
    static constexpr std::size_t kMost = 7;

    std::span<const std::uint16_t> items() const noexcept { return std::span(m_items).first(m_count); }
    bool contains(UINT message) const noexcept { return std::ranges::find(items(), message) != items().end(); }

    /// Messages are 16 bits wide. Throws std::bad_alloc when the list is full.
    void add(UINT message)
    {
        if (m_count == kMost)
            throw std::bad_alloc();
        m_items[m_count++] = static_cast<std::uint16_t>(message);
    }

private:
    std::array<std::uint16_t, kMost> m_items{};
    std::uint16_t m_count = 0;
};

} // namespace morvane
