#include "module/registration/registrar.h"

#include <functional>

namespace morvane::registration {

namespace {

constexpr std::uint32_t kString = 1;
constexpr std::uint32_t kBinary = 3;
constexpr std::uint32_t kNumber = 4;

/// Brings a deleted tree back, also over what a deletion that stopped half-way left of it.
void restoreTree(KeyStore& store, const KeyPath& key, const StoredKey& content)
{
    if (!store.hasKey(key))
        store.createKey(key);
    for (const auto& [name, value] : content.values)
        store.writeValue(key, name, value);
    for (const auto& [name, below] : content.keys)
        restoreTree(store, key / name, below);
}

/// Changes the store and remembers how to take each change back. Without commit() the destructor takes all of them
/// back.
class Transaction {
public:
    explicit Transaction(KeyStore& store) : m_store(store) {}
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction()
    {
        for (auto step = m_undo.rbegin(); step != m_undo.rend(); ++step) {
            try {
                (*step)();
            } catch (...) {
                // The store that refused before may refuse again; the other steps are still worth taking back.
            }
        }
    }

    void commit() noexcept { m_undo.clear(); }

    bool hasKey(const KeyPath& key) { return m_store.hasKey(key); }

    void ensureKey(const KeyPath& key)
    {
        if (m_store.hasKey(key))
            return;
        remember([this, key] { m_store.deleteTree(key); }, [&] { m_store.createKey(key); });
    }

    void deleteTree(const KeyPath& key)
    {
        if (!m_store.hasKey(key))
            return;
        // Remembered before it is tried: a deletion that fails may have deleted a part.
        m_undo.push_back([this, key, copy = m_store.copyTree(key)] { restoreTree(m_store, key, copy); });
        m_store.deleteTree(key);
    }

    void writeValue(const KeyPath& key, const std::u16string& name, const Data& data)
    {
        remember(restoreValue(key, name), [&] { m_store.writeValue(key, name, encode(data)); });
    }

    void deleteValue(const KeyPath& key, const std::u16string& name)
    {
        if (m_store.readValue(key, name))
            remember(restoreValue(key, name), [&] { m_store.deleteValue(key, name); });
    }

private:
    using Step = std::function<void()>;

    Step restoreValue(const KeyPath& key, const std::u16string& name)
    {
        return [this, key, name, old = m_store.readValue(key, name)] {
            if (old)
                m_store.writeValue(key, name, *old);
            else
                m_store.deleteValue(key, name);
        };
    }

    /// Does a step that happens wholly or not at all; its undoing is kept only when it happened.
    template <class Change>
    void remember(Step undo, Change change)
    {
        m_undo.push_back(std::move(undo));
        try {
            change();
        } catch (...) {
            m_undo.pop_back();
            throw;
        }
    }

    KeyStore& m_store;
    std::vector<Step> m_undo;
};

void registerKey(Transaction& store, const KeyPath& parent, const Key& key)
{
    const KeyPath path = parent / key.name;
    if (key.removal == Removal::ForceRemove)
        store.deleteTree(path);
    store.ensureKey(path);
    if (key.defaultValue)
        store.writeValue(path, {}, *key.defaultValue);
    for (const NamedValue& value : key.values)
        store.writeValue(path, value.name, value.data);
    for (const Key& below : key.keys)
        registerKey(store, path, below);
}

void unregisterKey(Transaction& store, const KeyPath& parent, const Key& key)
{
    const KeyPath path = parent / key.name;
    if (!store.hasKey(path))
        return;
    if (key.removal != Removal::NoRemove) {
        store.deleteTree(path);
        return;
    }
    for (const NamedValue& value : key.values)
        store.deleteValue(path, value.name);
    for (const Key& below : key.keys)
        unregisterKey(store, path, below);
}

} // namespace

StoredValue encode(const Data& data)
{
    if (const auto* text = std::get_if<std::u16string>(&data)) {
        StoredValue value{kString, {}};
        for (std::size_t i = 0; i <= text->size(); ++i) {
            const char16_t c = i < text->size() ? (*text)[i] : u'\0';
            value.data.push_back(static_cast<std::uint8_t>(c & 0xFF));
            value.data.push_back(static_cast<std::uint8_t>(c >> 8));
        }
        return value;
    }
    if (const auto* number = std::get_if<std::uint32_t>(&data)) {
        StoredValue value{kNumber, {}};
        for (unsigned shift = 0; shift < 32; shift += 8)
            value.data.push_back(static_cast<std::uint8_t>(*number >> shift));
        return value;
    }
    return {kBinary, std::get<Bytes>(data)};
}

void run(const Script& script, Mode mode, KeyStore& store)
{
    Transaction transaction(store);
    for (const Section& section : script)
        for (const Key& key : section.keys)
            (mode == Mode::Register ? registerKey : unregisterKey)(transaction, {section.root, {}}, key);
    transaction.commit();
}

} // namespace morvane::registration
