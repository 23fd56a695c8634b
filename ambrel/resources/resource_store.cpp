#include "ambrel/resources/resource_store.h"

#include "frame/com/bstr.h"

#include <algorithm>
#include <cwctype>

namespace ambrel {

using morvane::ComPtr;

ComPtr<IVexObj> ResourceStore::find(VexObjType type, std::wstring_view name) const
{
    const auto found = m_entries.find({type, std::wstring(name)});
    return found == m_entries.end() ? nullptr : found->second.object;
}

namespace {

/// An id is written "Guid" and 32 digits, or as an identifier in braces; what is neither is compared as it stands.
std::wstring plainId(std::wstring_view id)
{
    constexpr std::size_t kDigits = 32;
    std::wstring digits;
    for (const wchar_t c : id.starts_with(L"Guid") ? id.substr(4) : id) {
        if (std::iswxdigit(static_cast<wint_t>(c)))
            digits += static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
        else if (c != L'{' && c != L'}' && c != L'-')
            return std::wstring(id);
    }
    return digits.size() == kDigits ? digits : std::wstring(id);
}

} // namespace

ComPtr<IVexObj> ResourceStore::findById(VexObjType type, std::wstring_view id) const
{
    const std::wstring wanted = plainId(id);
    for (const auto& [key, entry] : m_entries) {
        morvane::Bstr own;
        if (key.type == type && SUCCEEDED(entry.object->GetObjectID(own.put())) && plainId(own.view()) == wanted)
            return entry.object;
    }
    return nullptr;
}

void ResourceStore::add(VexObjType type, std::wstring_view name, ComPtr<IVexObj> object, bool fromSkin)
{
    const Key key{type, std::wstring(name)};
    const auto [place, isNew] = m_entries.try_emplace(key);
    if (isNew)
        place->second.position = m_next++;
    place->second.fromSkin = fromSkin;
    std::swap(place->second.object, object); // the former one goes after the store is whole again
}

bool ResourceStore::remove(IVexObj* object)
{
    if (!object)
        return false;
    const ComPtr<IVexObj> leaving(object);
    return std::erase_if(m_entries, [&](const auto& each) { return each.second.object.get() == object; }) > 0;
}

bool ResourceStore::rename(IVexObj* object, std::wstring_view former, std::wstring_view name)
{
    const auto known =
        std::ranges::find_if(m_entries, [&](const auto& each) { return each.second.object.get() == object; });
    if (known == m_entries.end() || former == name)
        return true;
    const VexObjType type = known->first.type;
    const Entry entry = known->second;
    const auto [place, isNew] = m_entries.try_emplace({type, std::wstring(name)}, entry);
    if (!isNew && place->second.object.get() != object)
        return false;
    const auto old = m_entries.find({type, std::wstring(former)});
    if (old != m_entries.end() && old->second.object.get() == object)
        m_entries.erase(old);
    return true;
}

void ResourceStore::moveToFront(IVexObj* object) noexcept
{
    for (auto& [key, entry] : m_entries) {
        if (entry.object.get() == object)
            entry.position = --m_first;
    }
}

void ResourceStore::clear(bool onlyFromSkin)
{
    std::vector<ComPtr<IVexObj>> leaving;
    for (auto each = m_entries.begin(); each != m_entries.end();) {
        if (onlyFromSkin && !each->second.fromSkin) {
            ++each;
            continue;
        }
        leaving.push_back(std::move(each->second.object));
        each = m_entries.erase(each);
    }
}

std::vector<ComPtr<IVexObj>> ResourceStore::all(VexObjType type) const
{
    std::vector<const Entry*> entries;
    for (const auto& [key, entry] : m_entries) {
        if (key.type == type)
            entries.push_back(&entry);
    }
    std::sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) { return a->position < b->position; });
    std::vector<ComPtr<IVexObj>> result;
    for (const Entry* each : entries) {
        if (std::ranges::find(result, each->object) == result.end())
            result.push_back(each->object);
    }
    return result;
}

} // namespace ambrel
