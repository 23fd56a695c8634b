#include "ambrel/properties/atoms.h"

#include <deque>
#include <string>
#include <unordered_map>

namespace ambrel {

namespace {

struct AtomTable {
    AtomTable() : texts(1) {}

    std::deque<std::wstring> texts; // never moves what it holds; the first is the empty text
    std::unordered_map<std::wstring_view, std::uint32_t> indices;
};

AtomTable& table()
{
    // Never destroyed: objects that outlive the module's statics may still ask for their names.
    static AtomTable& instance = *new AtomTable;
    return instance;
}

} // namespace

Atom::Atom(std::wstring_view text)
{
    if (text.empty())
        return;
    AtomTable& atoms = table();
    if (const auto known = atoms.indices.find(text); known != atoms.indices.end()) {
        m_index = known->second;
        return;
    }
    const auto index = static_cast<std::uint32_t>(atoms.texts.size());
    const std::wstring& kept = atoms.texts.emplace_back(text);
    try {
        atoms.indices.emplace(kept, index);
    } catch (...) {
        atoms.texts.pop_back();
        throw;
    }
    m_index = index;
}

std::wstring_view Atom::text() const noexcept
{
    return table().texts[m_index];
}

} // namespace ambrel
