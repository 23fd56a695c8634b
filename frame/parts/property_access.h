// Interface methods that only read or write one property.
#pragma once

#include "frame/com/result.h"
#include "frame/properties.h"

namespace morvane {

/// Writes a Boolean property; S_FALSE while it does not exist.
inline HRESULT store(BoolProp& property, VARIANT_BOOL value) noexcept
{
    return guarded([&] {
        property.set(value);
        return property ? S_OK : S_FALSE;
    });
}

/// Writes a Boolean property, then does what follows from it; S_FALSE and nothing done while it does not exist.
template <class Then>
HRESULT storeThen(BoolProp& property, VARIANT_BOOL value, Then then) noexcept
{
    return guarded([&] {
        if (!property)
            return S_FALSE;
        property.set(value);
        then();
        return S_OK;
    });
}

/// Reads a Boolean property's bits; S_FALSE and false while it does not exist.
inline HRESULT fetch(const BoolProp& property, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& value) {
        value = property.raw();
        return property ? S_OK : S_FALSE;
    });
}

inline HRESULT store(StringProp& property, BSTR value) noexcept
{
    return guarded([&] { property.set(value); });
}

inline HRESULT fetch(const StringProp& property, BSTR* result) noexcept
{
    return returning(result, [&] { return property.value(); });
}

template <enumPropType Type>
HRESULT fetch(const NumberProp<Type>& property, long* result) noexcept
{
    return returning(result, [&] { return property.value(); });
}

/// Reads two numbers that belong together.
inline HRESULT fetch(const LongProp& first, const LongProp& second, long* firstResult, long* secondResult) noexcept
{
    if (!firstResult || !secondResult)
        return E_POINTER;
    return guarded([&] {
        *firstResult = first.value();
        *secondResult = second.value();
    });
}

inline HRESULT store(ColorProp& property, OLE_COLOR color) noexcept
{
    return guarded([&] { property.set(color); });
}

inline HRESULT fetch(const ColorProp& property, OLE_COLOR* result) noexcept
{
    return returning(result, [&] { return property.value(); });
}

/// Stores an image section, fetches it counted.
inline HRESULT store(ImageProp& property, IVexImageBase* section) noexcept
{
    return guarded([&] { property.setSection(section); });
}

inline HRESULT fetch(const ImageProp& property, IVexImageBase** result) noexcept
{
    return returning(result, [&] { return property.section(); });
}

inline HRESULT store(TextStyleProp& property, IVexTextStyle* style) noexcept
{
    return guarded([&] { property.setStyle(style); });
}

inline HRESULT fetch(const TextStyleProp& property, IVexTextStyle** result) noexcept
{
    return returning(result, [&] { return property.style(); });
}

/// A getter's answer to an index that does not exist: the out-parameter is cleared.
template <class Out>
HRESULT refused(Out* result, HRESULT status = E_INVALIDARG) noexcept
{
    if (!result)
        return E_POINTER;
    *result = Out{};
    return status;
}

// Methods that reach a property through the index of a state: the look is null where the index leads nowhere.

template <class Look, class Property, class Value>
HRESULT storeIn(Look* look, Property Look::*property, Value* value) noexcept
{
    return look ? store(look->*property, value) : E_INVALIDARG;
}

/// The same for methods that also say whether they did it.
template <class Look, class Property, class Value>
HRESULT storeIn(Look* look, Property Look::*property, const Value& value, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) {
        const HRESULT status = look ? store(look->*property, value) : E_INVALIDARG;
        done = toVariantBool(status == S_OK);
        return status;
    });
}

template <class Look, class Property, class Out>
HRESULT fetchFrom(Look* look, Property Look::*property, Out* result, HRESULT otherwise = E_INVALIDARG) noexcept
{
    return look ? fetch(look->*property, result) : refused(result, otherwise);
}

} // namespace morvane
