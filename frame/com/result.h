// The boundary between interface methods and C++: checks out-pointers and turns exceptions into statuses, here only.
#pragma once

#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"

#include <concepts>
#include <new>
#include <type_traits>
#include <utility>

namespace morvane {

/// The status of the exception being handled: memory is E_OUTOFMEMORY, anything else E_FAIL.
HRESULT statusOfCurrentException() noexcept;

/// Runs the body of an interface method. A body that returns nothing means S_OK.
template <class Body>
HRESULT guarded(Body&& body) noexcept
{
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
            std::forward<Body>(body)();
            return S_OK;
        } else {
            return std::forward<Body>(body)();
        }
    } catch (...) {
        return statusOfCurrentException();
    }
}

namespace detail {
inline void assignOut(BSTR* out, Bstr value) noexcept
{
    *out = value.detach();
}

template <class T>
void assignOut(T** out, ComPtr<T> value) noexcept
{
    *out = value.detach();
}

inline void assignOut(VARIANT_BOOL* out, bool value) noexcept
{
    *out = value ? VARIANT_TRUE : VARIANT_FALSE;
}

template <class T, class V>
requires(std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_class_v<T>) void assignOut(T* out,
                                                                                            const V& value) noexcept
{
    *out = static_cast<T>(value);
}
} // namespace detail

/// For getters: refuses a null out-pointer before anything runs, then stores what the body returns (Bstr, ComPtr, bool
/// or a plain value) and answers S_OK.
template <class Out, class Body>
HRESULT returning(Out* out, Body&& body) noexcept
{
    if (!out)
        return E_POINTER;
    return guarded([&] { detail::assignOut(out, std::forward<Body>(body)()); });
}

/// For methods whose status depends on the work: refuses a null out-pointer, clears it, then runs the body with the
/// place.
template <class Out, class Body>
HRESULT filling(Out* out, Body&& body) noexcept
{
    if (!out)
        return E_POINTER;
    *out = Out{};
    return guarded([&] { return std::forward<Body>(body)(*out); });
}

constexpr VARIANT_BOOL toVariantBool(bool value) noexcept
{
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

} // namespace morvane
