// A list for objects that exist in great numbers and hold a few entries each.
#pragma once

#include "ambrel/properties/small_blocks.h"

#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <utility>

namespace ambrel {

/// Grows in small blocks; 16 bytes when empty. At most 65535 entries. T must be movable without failing.
template <class T>
class CompactList {
public:
    CompactList() noexcept = default;
    CompactList(const CompactList&) = delete;
    CompactList& operator=(const CompactList&) = delete;
    CompactList(CompactList&& other) noexcept
        : m_items(std::exchange(other.m_items, nullptr)), m_size(std::exchange(other.m_size, std::uint16_t{0})),
          m_capacity(std::exchange(other.m_capacity, std::uint16_t{0}))
    {
    }
    ~CompactList()
    {
        std::destroy_n(m_items, m_size);
        releaseBlock(m_items, m_capacity * sizeof(T));
    }

    std::span<T> items() const noexcept { return {m_items, m_size}; }
    std::size_t size() const noexcept { return m_size; }
    T& operator[](std::size_t index) const noexcept { return m_items[index]; }

    /// Throws std::bad_alloc, also when the list is full.
    void add(T item)
    {
        if (m_size == m_capacity)
            grow();
        new (m_items + m_size) T(std::move(item));
        ++m_size;
    }

    /// Takes one entry out, so that it goes only after the list is consistent again.
    T take(std::size_t index) noexcept
    {
        T taken = std::move(m_items[index]);
        for (std::size_t i = index + 1; i < m_size; ++i)
            m_items[i - 1] = std::move(m_items[i]);
        --m_size;
        std::destroy_at(m_items + m_size);
        return taken;
    }

private:
    void grow()
    {
        constexpr std::size_t kMost = 0xFFFF;
        if (m_capacity == kMost)
            throw std::bad_alloc();
        // Tight, since most lists are as short as a group's properties: 1, 2, 3, 4, 6, 9...
        const std::size_t wanted = m_capacity + (m_capacity > 3 ? m_capacity / 2 : 1);
        const std::size_t capacity = wanted < kMost ? wanted : kMost;
        auto* items = static_cast<T*>(allocateBlock(capacity * sizeof(T)));
        std::uninitialized_move_n(m_items, m_size, items);
        std::destroy_n(m_items, m_size);
        releaseBlock(m_items, m_capacity * sizeof(T));
        m_items = items;
        m_capacity = static_cast<std::uint16_t>(capacity);
    }

    T* m_items = nullptr;
    std::uint16_t m_size = 0;
    std::uint16_t m_capacity = 0;
};

} // namespace ambrel
