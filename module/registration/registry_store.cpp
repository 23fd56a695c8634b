#include "module/registration/registry_store.h"

namespace morvane::registration {

namespace {

void require(LSTATUS status)
{
    if (status != ERROR_SUCCESS)
        throw StoreError{static_cast<std::uint32_t>(status)};
}

std::wstring wide(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

HKEY handleOf(Root root) noexcept
{
    switch (root) {
    case Root::ClassesRoot:
        return HKEY_CLASSES_ROOT;
    case Root::CurrentUser:
        return HKEY_CURRENT_USER;
    case Root::LocalMachine:
        return HKEY_LOCAL_MACHINE;
    case Root::Users:
        return HKEY_USERS;
    case Root::PerformanceData:
        return HKEY_PERFORMANCE_DATA;
    case Root::DynamicData:
        return HKEY_DYN_DATA;
    case Root::CurrentConfig:
        return HKEY_CURRENT_CONFIG;
    }
    return nullptr;
}

/// An open key.
class RegistryKey {
public:
    RegistryKey(const KeyPath& key, REGSAM access)
    {
        require(RegOpenKeyExW(handleOf(key.root), wide(key.path).c_str(), 0, access, &m_handle));
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey() { RegCloseKey(m_handle); }

    HKEY get() const noexcept { return m_handle; }

private:
    HKEY m_handle = nullptr;
};

/// The names of a key's values or subkeys; `next` is RegEnumValueW or RegEnumKeyExW behind a common face.
template <class Next>
std::vector<std::u16string> namesOf(std::size_t longest, Next next)
{
    std::vector<std::u16string> names;
    std::wstring buffer(longest + 1, L'\0');
    for (DWORD index = 0;; ++index) {
        DWORD length = static_cast<DWORD>(buffer.size());
        const LSTATUS status = next(index, buffer.data(), &length);
        if (status == ERROR_NO_MORE_ITEMS)
            return names;
        require(status);
        names.emplace_back(buffer.begin(), buffer.begin() + length);
    }
}

} // namespace

bool RegistryStore::hasKey(const KeyPath& key)
{
    HKEY handle = nullptr;
    const LSTATUS status = RegOpenKeyExW(handleOf(key.root), wide(key.path).c_str(), 0, KEY_READ, &handle);
    if (status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND)
        return false;
    require(status);
    RegCloseKey(handle);
    return true;
}

void RegistryStore::createKey(const KeyPath& key)
{
    HKEY handle = nullptr;
    require(RegCreateKeyExW(handleOf(key.root), wide(key.path).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                            nullptr, &handle, nullptr));
    RegCloseKey(handle);
}

void RegistryStore::deleteTree(const KeyPath& key)
{
    const std::wstring path = wide(key.path);
    require(RegDeleteTreeW(handleOf(key.root), path.c_str()));
}

StoredKey RegistryStore::copyTree(const KeyPath& key)
{
    const RegistryKey open(key, KEY_READ);
    DWORD longestKey = 0;
    DWORD longestValue = 0;
    require(RegQueryInfoKeyW(open.get(), nullptr, nullptr, nullptr, nullptr, &longestKey, nullptr, nullptr,
                             &longestValue, nullptr, nullptr, nullptr));
    StoredKey copy;
    const auto values = namesOf(longestValue, [&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumValueW(open.get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
    for (const std::u16string& name : values)
        copy.values[name] = readValue(key, name).value_or(StoredValue{});
    const auto keys = namesOf(longestKey, [&](DWORD index, wchar_t* name, DWORD* length) {
        return RegEnumKeyExW(open.get(), index, name, length, nullptr, nullptr, nullptr, nullptr);
    });
    for (const std::u16string& name : keys)
        copy.keys[name] = copyTree(key / name);
    return copy;
}

std::optional<StoredValue> RegistryStore::readValue(const KeyPath& key, const std::u16string& name)
{
    const RegistryKey open(key, KEY_READ);
    const std::wstring wideName = wide(name);
    DWORD type = 0;
    DWORD size = 0;
    const LSTATUS status = RegQueryValueExW(open.get(), wideName.c_str(), nullptr, &type, nullptr, &size);
    if (status == ERROR_FILE_NOT_FOUND)
        return std::nullopt;
    require(status);
    StoredValue value{type, Bytes(size)};
    require(RegQueryValueExW(open.get(), wideName.c_str(), nullptr, &type, value.data.data(), &size));
    value.data.resize(size);
    return value;
}

void RegistryStore::writeValue(const KeyPath& key, const std::u16string& name, const StoredValue& value)
{
    const RegistryKey open(key, KEY_WRITE);
    require(RegSetValueExW(open.get(), wide(name).c_str(), 0, value.type, value.data.data(),
                           static_cast<DWORD>(value.data.size())));
}

void RegistryStore::deleteValue(const KeyPath& key, const std::u16string& name)
{
    const RegistryKey open(key, KEY_WRITE);
    require(RegDeleteValueW(open.get(), wide(name).c_str()));
}

} // namespace morvane::registration
