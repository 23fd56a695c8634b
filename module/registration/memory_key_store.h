// A registry in memory for tests, which can refuse a step.
#pragma once

#include "module/registration/key_store.h"

namespace morvane::registration {

class MemoryKeyStore final : public KeyStore {
public:
    /// Everything in the store; the roots are keys named by their abbreviations.
    StoredKey content;

    /// The change with this number (counted from 0) and all later ones up to `refusalCount` fail with access denied.
    int refuseAt = -1;
    int refusalCount = 1;
    int changes = 0;

    bool hasKey(const KeyPath& key) override { return find(key) != nullptr; }

    void createKey(const KeyPath& key) override
    {
        change();
        const auto [above, name] = split(key);
        at(above).keys[name];
    }

    void deleteTree(const KeyPath& key) override
    {
        change();
        const auto [above, name] = split(key);
        at(above).keys.erase(name);
    }

    StoredKey copyTree(const KeyPath& key) override { return at(key); }

    std::optional<StoredValue> readValue(const KeyPath& key, const std::u16string& name) override
    {
        const auto& values = at(key).values;
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    void writeValue(const KeyPath& key, const std::u16string& name, const StoredValue& value) override
    {
        change();
        at(key).values[name] = value;
    }

    void deleteValue(const KeyPath& key, const std::u16string& name) override
    {
        change();
        at(key).values.erase(name);
    }

    /// Creates a key with everything above it, for arranging a test.
    StoredKey& make(std::u16string_view path)
    {
        StoredKey* key = &content;
        for (std::u16string_view rest = path; !rest.empty();) {
            const std::size_t end = std::min(rest.find(u'\\'), rest.size());
            key = &key->keys[std::u16string(rest.substr(0, end))];
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
        return *key;
    }

private:
    static constexpr std::uint32_t kAccessDenied = 5;
    static constexpr std::uint32_t kNotFound = 2;

    void change()
    {
        const int number = changes++;
        if (refuseAt >= 0 && number >= refuseAt && number < refuseAt + refusalCount)
            throw StoreError{kAccessDenied};
    }

    static std::pair<KeyPath, std::u16string> split(const KeyPath& key)
    {
        const std::size_t last = key.path.rfind(u'\\');
        if (last == std::u16string::npos)
            return {{key.root, {}}, key.path};
        return {{key.root, key.path.substr(0, last)}, key.path.substr(last + 1)};
    }

    StoredKey* find(const KeyPath& key)
    {
        StoredKey* found = &content.keys[std::u16string(abbreviationOf(key.root))];
        for (std::u16string_view rest = key.path; !rest.empty();) {
            const std::size_t end = std::min(rest.find(u'\\'), rest.size());
            const auto below = found->keys.find(std::u16string(rest.substr(0, end)));
            if (below == found->keys.end())
                return nullptr;
            found = &below->second;
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
        return found;
    }

    StoredKey& at(const KeyPath& key)
    {
        StoredKey* found = find(key);
        if (!found)
            throw StoreError{kNotFound};
        return *found;
    }
};

} // namespace morvane::registration
