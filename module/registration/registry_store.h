// The registry as a store for registration scripts.
#pragma once

#include "module/registration/key_store.h"

#include "host/windows_headers.h"

namespace morvane::registration {

class RegistryStore final : public KeyStore {
public:
    bool hasKey(const KeyPath& key) override;
    void createKey(const KeyPath& key) override;
    void deleteTree(const KeyPath& key) override;
    StoredKey copyTree(const KeyPath& key) override;
    std::optional<StoredValue> readValue(const KeyPath& key, const std::u16string& name) override;
    void writeValue(const KeyPath& key, const std::u16string& name, const StoredValue& value) override;
    void deleteValue(const KeyPath& key, const std::u16string& name) override;
};

} // namespace morvane::registration
