// What was made from texts and is costly to make again.
#pragma once

#include "base/geometry.h"

#include <cstddef>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace ambrel {

/// Keeps the values that were used last, within a number of bytes. Finding one allocates nothing. `bytesOf(value)`,
/// found by its argument, says what a value takes besides its own size.
template <class Value>
class RecentTexts {
public:
    struct Key {
        std::wstring_view text;
        morvane::Size room;
        unsigned how = 0; // whatever else the value depends on

        friend bool operator==(const Key&, const Key&) = default;
    };

    /// The last used value is kept even when it alone is larger.
    explicit RecentTexts(std::size_t mostBytes) : m_mostBytes(mostBytes) {}
    RecentTexts(const RecentTexts&) = delete;
    RecentTexts& operator=(const RecentTexts&) = delete;

    /// The value of a key; `make` makes it when it is not there. Valid until the next call. Throws what `make` throws,
    /// and std::bad_alloc.
    template <class Make>
    const Value& get(const Key& key, Make&& make)
    {
        const auto found = m_places.find(key);
        if (found != m_places.end())
            m_entries.splice(m_entries.begin(), m_entries, found->second);
        else
            add(key, make());
        return m_entries.front().value;
    }

    std::size_t count() const noexcept { return m_entries.size(); }
    std::size_t bytes() const noexcept { return m_bytes; }

private:
    struct Entry {
        std::wstring text;
        morvane::Size room;
        unsigned how;
        Value value;
        std::size_t bytes;

        Key key() const { return {text, room, how}; }
    };
    using Entries = std::list<Entry>;

    struct Hash {
        std::size_t operator()(const Key& key) const noexcept
        {
            constexpr std::size_t kSpread = 0x9E3779B97F4A7C15;
            const std::size_t room = static_cast<std::size_t>(static_cast<unsigned>(key.room.width)) << 32 ^
                                     static_cast<unsigned>(key.room.height);
            return std::hash<std::wstring_view>()(key.text) ^ ((room * kSpread) ^ key.how) * kSpread;
        }
    };

    void add(const Key& key, Value value)
    {
        constexpr std::size_t kNodes = 14 * sizeof(void*); // of the list and the map, about
        const std::size_t bytes = sizeof(Entry) + kNodes + key.text.size() * sizeof(wchar_t) + bytesOf(value);
        Entries made;
        made.push_front({std::wstring(key.text), key.room, key.how, std::move(value), bytes});
        m_places.emplace(made.front().key(), made.begin());
        m_entries.splice(m_entries.begin(), made);
        m_bytes += bytes;
        while (m_bytes > m_mostBytes && m_entries.size() > 1) {
            m_places.erase(m_entries.back().key());
            m_bytes -= m_entries.back().bytes;
            m_entries.pop_back();
        }
    }

    std::size_t m_mostBytes;
    std::size_t m_bytes = 0;
    Entries m_entries;                                                  // the last used first
    std::unordered_map<Key, typename Entries::iterator, Hash> m_places; // keys look into the entries' texts
};

} // namespace ambrel
