#include "ambrel/resources/texts.h"

#include "ambrel/resources/skin_resources.h"

#include <algorithm>

namespace ambrel {

const skin::LanguageTexts* textsOf(const skin::Skin* skin, VEX_LANGUAGE language) noexcept
{
    if (!skin)
        return nullptr;
    const auto found =
        std::ranges::find(skin->languages, static_cast<std::int32_t>(language), &skin::LanguageTexts::language);
    return found == skin->languages.end() ? nullptr : &*found;
}

void BoundTexts::add(std::wstring_view key, std::wstring_view text, hyper property)
{
    const auto known = std::ranges::find_if(
        m_bindings, [&](const Binding& each) { return each.property == property && each.key == key; });
    if (known != m_bindings.end())
        known->own = text;
    else
        m_bindings.push_back({std::wstring(key), std::wstring(text), property});
}

bool BoundTexts::remove(std::wstring_view key, hyper property)
{
    return std::erase_if(m_bindings,
                         [&](const Binding& each) { return each.property == property && each.key == key; }) > 0;
}

std::optional<std::wstring> BoundTexts::find(const skin::Skin* skin, VEX_LANGUAGE language, VEX_LANGUAGE used,
                                             std::wstring_view key) const
{
    const skin::LanguageTexts* const texts = textsOf(skin, language);
    if (const std::string* const translated = texts ? texts->find(narrowed(key)) : nullptr)
        return widened(*translated);
    const auto own = std::ranges::find(m_bindings, key, &Binding::key);
    if (language != used || own == m_bindings.end())
        return std::nullopt;
    return own->own;
}

std::vector<skin::LanguageTexts> BoundTexts::all(const skin::Skin* skin, VEX_LANGUAGE used) const
{
    std::vector<skin::LanguageTexts> languages = skin ? skin->languages : std::vector<skin::LanguageTexts>();
    const auto number = static_cast<std::int32_t>(used);
    auto own = std::ranges::find(languages, number, &skin::LanguageTexts::language);
    if (own == languages.end())
        own = languages.insert(languages.end(), {number, {}});
    for (const Binding& each : m_bindings) {
        std::string key = narrowed(each.key);
        if (!own->find(key))
            own->texts.push_back({std::move(key), narrowed(each.own)});
    }
    return languages;
}

} // namespace ambrel
