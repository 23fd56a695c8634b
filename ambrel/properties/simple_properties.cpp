#include "ambrel/properties/simple_properties.h"

#include "ambrel/properties/value_text.h"

namespace ambrel {

using morvane::Bstr;
using morvane::guarded;
using morvane::returning;
using morvane::viewOf;

namespace {

constexpr LCID kNeutral = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

} // namespace

ConvertedVariant::ConvertedVariant(const VARIANT& source, VARTYPE type) noexcept
{
    VariantInit(&m_value);
    if ((source.vt == VT_R4 && !std::isfinite(source.fltVal)) || (source.vt == VT_R8 && !std::isfinite(source.dblVal)))
        m_status = DISP_E_OVERFLOW;
    else
        // A user of this language may have set a decimal comma.
        m_status = VariantChangeTypeEx(&m_value, const_cast<VARIANT*>(&source), kNeutral,
                                       VARIANT_ALPHABOOL | VARIANT_NOUSEROVERRIDE, type);
}

std::wstring BoolRules::format(VARIANT_BOOL value)
{
    return std::wstring(formatBool(value != VARIANT_FALSE));
}

std::optional<VARIANT_BOOL> BoolRules::parse(std::wstring_view text) noexcept
{
    const auto value = parseBool(text);
    return value ? std::optional(morvane::toVariantBool(*value)) : std::nullopt;
}

std::wstring LongRules::format(long value)
{
    return formatLong(static_cast<std::int32_t>(value));
}
std::optional<std::int32_t> LongRules::parse(std::wstring_view text) noexcept
{
    return parseLong(text);
}

std::wstring FloatRules::format(float value)
{
    return formatFloat(value);
}
std::optional<float> FloatRules::parse(std::wstring_view text) noexcept
{
    return parseFloat(text);
}

STDMETHODIMP StringPropertyObject::GetValue(BSTR* value) noexcept
{
    return returning(value, [&] { return Bstr(m_text.view()); });
}

STDMETHODIMP StringPropertyObject::SetValue(const wchar_t* value) noexcept
{
    return guarded([&] { change(value ? std::wstring_view(value) : std::wstring_view(), Notify::Yes); });
}

void StringPropertyObject::change(std::wstring_view text, Notify notify)
{
    if (text == m_text.view())
        return;
    m_text = text.empty() ? Bstr() : Bstr(text);
    if (notify == Notify::Yes)
        announceChange();
}

HRESULT StringPropertyObject::toVariant(VARIANT& result)
{
    result.bstrVal = Bstr(m_text.view()).detach();
    result.vt = VT_BSTR;
    return S_OK;
}

HRESULT StringPropertyObject::fromVariant(const VARIANT& value, Notify notify)
{
    const ConvertedVariant converted(value, VT_BSTR);
    if (SUCCEEDED(converted.status()))
        change(viewOf(converted.value().bstrVal), notify);
    return converted.status();
}

TextResult StringPropertyObject::fromText(std::wstring_view text, const ResourceResolver&, Notify notify)
{
    change(text, notify);
    return TextResult::Taken;
}

STDMETHODIMP ComboPropertyObject::AddItem(const wchar_t* text) noexcept
{
    return guarded([&] {
        if (!m_items)
            m_items = std::make_unique<Items>();
        m_items->add(Atom(text ? std::wstring_view(text) : std::wstring_view()));
    });
}

STDMETHODIMP ComboPropertyObject::SetSelection(long index) noexcept
{
    if (!isChoice(index))
        return E_INVALIDARG;
    assign(m_selection, index);
    return S_OK;
}

STDMETHODIMP ComboPropertyObject::GetSelection(long* index) noexcept
{
    return returning(index, [&] { return selection(); });
}

STDMETHODIMP ComboPropertyObject::GetItemCount(long* count) noexcept
{
    return returning(count, [&] { return itemCount(); });
}

STDMETHODIMP ComboPropertyObject::GetItem(long index, BSTR* text) noexcept
{
    if (!text)
        return E_POINTER;
    *text = nullptr;
    if (index < 0 || !isChoice(index))
        return E_INVALIDARG;
    return returning(text, [&] { return Bstr((*m_items)[index].text()); });
}

STDMETHODIMP ComboPropertyObject::RemoveAllItems() noexcept
{
    m_items.reset();
    assign(m_selection, -1L);
    return S_OK;
}

std::optional<long> ComboPropertyObject::indexOf(std::wstring_view text) const noexcept
{
    for (std::size_t i = 0; i < itemCount(); ++i)
        if ((*m_items)[i].text() == text)
            return static_cast<long>(i);
    return std::nullopt;
}

HRESULT ComboPropertyObject::toVariant(VARIANT& result) noexcept
{
    result.vt = VT_I4;
    result.lVal = selection();
    return S_OK;
}

HRESULT ComboPropertyObject::fromVariant(const VARIANT& value, Notify notify)
{
    if (value.vt == VT_BSTR) {
        if (const auto index = indexOf(viewOf(value.bstrVal))) {
            assign(m_selection, *index, notify);
            return S_OK;
        }
    }
    const ConvertedVariant converted(value, VT_I4);
    if (FAILED(converted.status()))
        return converted.status();
    if (!isChoice(converted.value().lVal))
        return E_INVALIDARG;
    assign(m_selection, static_cast<long>(converted.value().lVal), notify);
    return S_OK;
}

std::wstring ComboPropertyObject::toText()
{
    return formatLong(static_cast<std::int32_t>(selection()));
}

TextResult ComboPropertyObject::fromText(std::wstring_view text, const ResourceResolver&, Notify notify)
{
    const auto number = parseLong(text);
    const auto index = number && isChoice(*number) ? std::optional<long>(*number) : indexOf(text);
    if (!index)
        return TextResult::NotThisType;
    assign(m_selection, *index, notify);
    return TextResult::Taken;
}

void ComboPropertyObject::copyValue(ComboPropertyObject& source)
{
    auto items = source.m_items ? std::make_unique<Items>() : nullptr;
    for (std::size_t i = 0; i < source.itemCount(); ++i)
        items->add((*source.m_items)[i]);
    m_items = std::move(items);
    m_selection = source.selection();
}

} // namespace ambrel
