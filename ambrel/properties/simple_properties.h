// Properties whose value is a plain one: Boolean, numbers, text, a choice.
#pragma once

#include "ambrel/properties/compact_list.h"
#include "ambrel/properties/property.h"
#include "host/typed_properties.h"

#include <cmath>
#include <type_traits>

namespace ambrel {

/// A change of type for values that automation can convert; empty when it cannot. The same for every user: no setting
/// of the system counts. Numbers that are none or infinite are an overflow.
class ConvertedVariant {
public:
    /// Keeps a converted copy of `source`, which is not one by reference.
    ConvertedVariant(const VARIANT& source, VARTYPE type) noexcept;
    ConvertedVariant(const ConvertedVariant&) = delete;
    ConvertedVariant& operator=(const ConvertedVariant&) = delete;
    ~ConvertedVariant() { VariantClear(&m_value); }

    HRESULT status() const noexcept { return m_status; }
    const VARIANT& value() const noexcept { return m_value; }

private:
    VARIANT m_value;
    HRESULT m_status;
};

/// Boolean and numbers. `Rules` names the automation type and the text form of the value. Numbers with a fraction are
/// finite: others are refused with E_INVALIDARG, for no control's arithmetic expects them.
template <class Value, class Rules>
class NumberProperty final : public Property<NumberProperty<Value, Rules>, morvane::ValueProperty<Value>> {
    using Base = Property<NumberProperty, morvane::ValueProperty<Value>>;

public:
    using Base::Base;

    STDMETHODIMP GetValue(Value* value) noexcept override
    {
        if (!value)
            return E_POINTER;
        *value = m_value;
        return S_OK;
    }
    STDMETHODIMP SetValue(Value value) noexcept override
    {
        if constexpr (std::is_floating_point_v<Value>)
            if (!std::isfinite(value))
                return E_INVALIDARG;
        this->assign(m_value, value);
        return S_OK;
    }

    HRESULT toVariant(VARIANT& result) noexcept
    {
        result.vt = Rules::kVariantType;
        Rules::place(result) = m_value;
        return S_OK;
    }
    /// A text means what it means in a skin.
    HRESULT fromVariant(const VARIANT& value, Notify notify)
    {
        if (value.vt == VT_BSTR) {
            const auto taken = fromText(morvane::viewOf(value.bstrVal), SkinResources(nullptr), notify);
            return taken == TextResult::Taken ? S_OK : DISP_E_TYPEMISMATCH;
        }
        const ConvertedVariant converted(value, Rules::kVariantType);
        if (SUCCEEDED(converted.status()))
            this->assign(m_value, static_cast<Value>(Rules::place(const_cast<VARIANT&>(converted.value()))), notify);
        return converted.status();
    }
    std::wstring toText() { return Rules::format(m_value); }
    TextResult fromText(std::wstring_view text, const ResourceResolver&, Notify notify)
    {
        const auto value = Rules::parse(text);
        if (!value)
            return TextResult::NotThisType;
        this->assign(m_value, static_cast<Value>(*value), notify);
        return TextResult::Taken;
    }
    void copyValue(NumberProperty& source) noexcept { m_value = source.m_value; }

private:
    Value m_value{};
};

struct BoolRules {
    static constexpr VARTYPE kVariantType = VT_BOOL;
    static VARIANT_BOOL& place(VARIANT& v) noexcept { return v.boolVal; }
    static std::wstring format(VARIANT_BOOL value);
    static std::optional<VARIANT_BOOL> parse(std::wstring_view text) noexcept;
};

struct LongRules {
    static constexpr VARTYPE kVariantType = VT_I4;
    static LONG& place(VARIANT& v) noexcept { return v.lVal; }
    static std::wstring format(long value);
    static std::optional<std::int32_t> parse(std::wstring_view text) noexcept;
};

struct FloatRules {
    static constexpr VARTYPE kVariantType = VT_R4;
    static FLOAT& place(VARIANT& v) noexcept { return v.fltVal; }
    static std::wstring format(float value);
    static std::optional<float> parse(std::wstring_view text) noexcept;
};

/// Any bit pattern is kept as it was set: controls set 1 and test for non-zero, others test for -1. Skins keep the
/// truth alone.
using BoolPropertyObject = NumberProperty<VARIANT_BOOL, BoolRules>;
using LongPropertyObject = NumberProperty<long, LongRules>;
using FloatPropertyObject = NumberProperty<float, FloatRules>;

class StringPropertyObject final : public Property<StringPropertyObject, morvane::StringProperty> {
public:
    using Property::Property;

    STDMETHODIMP GetValue(BSTR* value) noexcept override;
    STDMETHODIMP SetValue(const wchar_t* value) noexcept override;

    HRESULT toVariant(VARIANT& result);
    HRESULT fromVariant(const VARIANT& value, Notify notify);
    std::wstring toText() { return m_text.str(); }
    TextResult fromText(std::wstring_view text, const ResourceResolver&, Notify notify);
    void copyValue(StringPropertyObject& source) { m_text = source.m_text; }

private:
    void change(std::wstring_view text, Notify notify);

    morvane::Bstr m_text; // none stands for the empty text
};

class ComboPropertyObject final : public Property<ComboPropertyObject, morvane::ComboProperty> {
public:
    using Property::Property;

    STDMETHODIMP AddItem(const wchar_t* text) noexcept override;
    /// -1 chooses none. E_INVALIDARG for an index that is no item.
    STDMETHODIMP SetSelection(long index) noexcept override;
    STDMETHODIMP GetSelection(long* index) noexcept override;
    STDMETHODIMP GetItemCount(long* count) noexcept override;
    STDMETHODIMP GetItem(long index, BSTR* text) noexcept override;
    /// Chooses none, too.
    STDMETHODIMP RemoveAllItems() noexcept override;

    HRESULT toVariant(VARIANT& result) noexcept;
    HRESULT fromVariant(const VARIANT& value, Notify notify); // an index, or the text of an item
    std::wstring toText();
    TextResult fromText(std::wstring_view text, const ResourceResolver&, Notify notify);
    void copyValue(ComboPropertyObject& source);

    /// Where the choice is kept, for the designer, who may write anything there. Valid while the property lives.
    long* selectionPlace() noexcept { return &m_selection; }
    /// The choice, -1 for none and for a number that chooses nothing.
    long selection() const noexcept { return isChoice(m_selection) ? m_selection : -1; }

private:
    using Items = CompactList<Atom>;

    std::size_t itemCount() const noexcept { return m_items ? m_items->size() : 0; }
    bool isChoice(long index) const noexcept { return index >= -1 && index < static_cast<long>(itemCount()); }
    std::optional<long> indexOf(std::wstring_view text) const noexcept;

    long m_selection = -1;
    std::unique_ptr<Items> m_items; // items are named by the controls' code, few and the same for every control
};

} // namespace ambrel
