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

} // namespace morvane
