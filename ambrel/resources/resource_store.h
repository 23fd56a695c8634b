// The shared resources of an application, found by kind and name.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ambrel {

/// Names are unique within a kind and compared as they are spelled. Keeps what it holds; for the user-interface thread.
class ResourceStore {
public:
    morvane::ComPtr<IVexObj> find(VexObjType type, std::wstring_view name) const;
    morvane::ComPtr<IVexObj> findById(VexObjType type, std::wstring_view id) const;

    /// Replaces a resource of the same kind and name. `fromSkin`: it goes when the skin is closed or changed.
    void add(VexObjType type, std::wstring_view name, morvane::ComPtr<IVexObj> object, bool fromSkin);
    /// Under all names that it has.
    bool remove(IVexObj* object);
    /// From now on found by `name` instead of `former`; other names that it has stay. False, and nothing changes, when
    /// another resource of its kind has the name. One that is not here may be called as it likes.
    bool rename(IVexObj* object, std::wstring_view former, std::wstring_view name);
    /// From now on the first one of its kind.
    void moveToFront(IVexObj* object) noexcept;
    void clear(bool onlyFromSkin);

    /// In the order of adding, each once however many names it has. A copy: the caller may change the store meanwhile.
    std::vector<morvane::ComPtr<IVexObj>> all(VexObjType type) const;
    std::size_t size() const noexcept { return m_entries.size(); }

private:
    struct Key {
        VexObjType type;
        std::wstring name;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept
        {
            return std::hash<std::wstring>()(key.name) * 31 + static_cast<std::size_t>(key.type);
        }
    };
    struct Entry {
        morvane::ComPtr<IVexObj> object;
        bool fromSkin = false;
        std::int64_t position = 0; // in the order of adding
    };

    std::unordered_map<Key, Entry, KeyHash> m_entries;
    std::int64_t m_next = 0;
    std::int64_t m_first = 0; // the position before it is free
};

} // namespace ambrel
