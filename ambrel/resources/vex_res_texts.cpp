// Languages and texts of the resource object.
#include "ambrel/properties/property_group.h"
#include "ambrel/resources/skin_import.h"
#include "ambrel/resources/vex_res.h"
#include "ambrel/skin/container.h"
#include "ambrel/skin/language_reader.h"
#include "ambrel/skin/vocabulary.h"

#include <filesystem>
#include <set>

namespace ambrel {

using morvane::Bstr;
using morvane::ComPtr;
using morvane::filling;
using morvane::guarded;
using morvane::returning;
using morvane::viewOf;

static_assert(VEX_LANGUAGE_LAST == skin::kLanguages);

namespace {

using FoundProperties = std::map<hyper, ComPtr<IVexPropBase>>;

void collectTexts(PropertyGroup& group, const std::set<hyper>& wanted, FoundProperties& found)
{
    for (const ComPtr<IVexPropBase>& each : group.properties()) {
        const auto address = reinterpret_cast<hyper>(each.get());
        if (wanted.contains(address) && ambrel::coreOf(each.get())->type() == _PROPTYPE_STRING)
            found.emplace(address, each);
    }
    for (const ComPtr<PropertyGroup>& child : group.groups())
        collectTexts(*child.get(), wanted, found);
}

} // namespace

void VexRes::showTexts()
{
    std::set<hyper> wanted;
    for (const BoundTexts::Binding& each : m_texts.bindings())
        wanted.insert(each.property);
    if (wanted.empty())
        return;
    FoundProperties found; // an address is followed only when a living control has the property
    anyObject([&](ObjectNode& node) {
        for (const ComPtr<ICtrlPluginProp>& each : coreOf(node).groups()) {
            if (const ComPtr<PropertyGroup> group = PropertyGroup::from(each.get()))
                collectTexts(*group.get(), wanted, found);
        }
        return false;
    });
    const std::shared_ptr<const skin::Skin> skin = m_skin;
    const std::vector<BoundTexts::Binding> bindings = m_texts.bindings(); // controls that are told may change them
    for (const BoundTexts::Binding& each : bindings) {
        const auto property = found.find(each.property);
        if (property == found.end())
            continue;
        const skin::LanguageTexts* const texts = textsOf(skin.get(), m_language);
        const std::string* const translated = texts ? texts->find(narrowed(each.key)) : nullptr;
        VARIANT value;
        VariantInit(&value);
        const Bstr text(translated ? widened(*translated) : each.own);
        value.vt = VT_BSTR;
        value.bstrVal = text.get();
        property->second->SetVariant(value);
    }
}

STDMETHODIMP VexRes::AddStrProp(BSTR key, BSTR value, hyper property) noexcept
{
    if (viewOf(key).empty())
        return E_INVALIDARG;
    return guarded([&] {
        m_texts.add(viewOf(key), viewOf(value), property);
        if (textsOf(m_skin.get(), m_language))
            showTexts();
    });
}

STDMETHODIMP VexRes::RemoveStrProp(BSTR key, hyper property) noexcept
{
    return guarded([&] { return m_texts.remove(viewOf(key), property) ? S_OK : S_FALSE; });
}

STDMETHODIMP VexRes::GetString(VEX_LANGUAGE language, BSTR key, BSTR* result) noexcept
{
    return filling(result, [&](BSTR& text) {
        const auto found = m_texts.find(m_skin.get(), language, m_language, viewOf(key));
        text = Bstr(found.value_or(std::wstring())).detach();
        return found ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexRes::ChangeLanguage(VEX_LANGUAGE language) noexcept
{
    if (language < 0 || language >= VEX_LANGUAGE_LAST)
        return E_INVALIDARG;
    return guarded([&] {
        if (std::exchange(m_language, language) == language)
            return S_FALSE;
        const ComPtr<IVexRes> hold(this);
        showTexts();
        notifyAll(VEXSM_CHANGELANGUAGE, language);
        redrawAll();
        return S_OK;
    });
}

STDMETHODIMP VexRes::GetCurLanguage(VEX_LANGUAGE* result) noexcept
{
    return returning(result, [&] { return m_language; });
}

STDMETHODIMP VexRes::GetCurAllLang(VEX_LANGUAGE* languages, LONG size, LONG* result) noexcept
{
    if (size > 0 && !languages)
        return E_POINTER;
    return returning(result, [&] {
        std::set<std::int32_t> numbers = {static_cast<std::int32_t>(m_language)};
        if (m_skin) {
            for (const skin::LanguageTexts& each : m_skin->languages)
                numbers.insert(each.language);
        }
        LONG count = 0;
        for (const std::int32_t each : numbers) {
            if (count < size)
                languages[count] = static_cast<VEX_LANGUAGE>(each);
            ++count;
        }
        return count;
    });
}

STDMETHODIMP VexRes::GenerateLanguageXML(BSTR path) noexcept
{
    if (viewOf(path).empty())
        return E_INVALIDARG;
    return guarded([&]() -> HRESULT {
        const auto written = skin::replaceFile(std::filesystem::path(std::wstring(viewOf(path))),
                                               skin::writeLanguages(m_texts.all(m_skin.get(), m_language)));
        return written ? S_OK : reportSkinError(written.error(), static_cast<IVexRes*>(this));
    });
}

STDMETHODIMP VexRes::AccessAttribString2(BSTR name, BSTR* value, VARIANT_BOOL read, VARIANT_BOOL* result) noexcept
{
    if (!value)
        return E_POINTER;
    return filling(result, [&](VARIANT_BOOL& worked) {
        // Texts of the application itself, without a node.
        if (read == VARIANT_FALSE) {
            m_settings.insert_or_assign(std::wstring(viewOf(name)), std::wstring(viewOf(*value)));
            worked = VARIANT_TRUE;
            return S_OK;
        }
        const auto found = m_settings.find(viewOf(name));
        if (found == m_settings.end())
            return S_FALSE;
        Bstr text(found->second);
        SysFreeString(*value);
        *value = text.detach();
        worked = VARIANT_TRUE;
        return S_OK;
    });
}

} // namespace ambrel
