// Where registration scripts write: the registry, or memory in tests.
#pragma once

#include "module/registration/script.h"

#include <memory>

namespace morvane::registration {

/// A value as the registry keeps it.
struct StoredValue {
    std::uint32_t type = 0; // REG_SZ 1, REG_BINARY 3, REG_DWORD 4, or any other that was there before
    Bytes data;
    bool operator==(const StoredValue&) const = default;
};

/// A key with everything below it, copied before it is deleted.
struct StoredKey {
    std::map<std::u16string, StoredValue> values; // the default value has the empty name
    std::map<std::u16string, StoredKey> keys;
    bool operator==(const StoredKey&) const = default;
};

/// A key below a root: names between backslashes.
struct KeyPath {
    Root root = Root::ClassesRoot;
    std::u16string path;

    KeyPath operator/(std::u16string_view name) const
    {
        return {root, path.empty() ? std::u16string(name) : path + u"\\" + std::u16string(name)};
    }
};

/// A store that did not do what was asked; `code` is the system's error.
struct StoreError {
    std::uint32_t code;
};

/// A tree of keys. Every operation throws StoreError when the store refuses it.
class KeyStore {
public:
    virtual ~KeyStore() = default;

    virtual bool hasKey(const KeyPath& key) = 0;
    /// Creates one key; the keys above it are there.
    virtual void createKey(const KeyPath& key) = 0;
    /// Deletes an existing key with everything below it.
    virtual void deleteTree(const KeyPath& key) = 0;
    virtual StoredKey copyTree(const KeyPath& key) = 0;

    /// Empty when the key has no such value. The default value has the empty name.
    virtual std::optional<StoredValue> readValue(const KeyPath& key, const std::u16string& name) = 0;
    virtual void writeValue(const KeyPath& key, const std::u16string& name, const StoredValue& value) = 0;
    virtual void deleteValue(const KeyPath& key, const std::u16string& name) = 0;
};

} // namespace morvane::registration
