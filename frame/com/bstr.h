// Automation strings: owned, borrowed and built into the program.
#pragma once

#include "frame/com/compiler.h"

#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace morvane {

/// The text of a borrowed BSTR; a null one is the empty string.
inline std::wstring_view viewOf(const OLECHAR* text) noexcept
{
    return text ? std::wstring_view(text, SysStringLen(const_cast<BSTR>(text))) : std::wstring_view();
}

/// Owns a BSTR.
class Bstr {
public:
    Bstr() noexcept = default;

    /// A new string with the given text. Throws std::bad_alloc.
    explicit Bstr(std::wstring_view text) : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
    {
        if (!m_text)
            throw std::bad_alloc();
    }

    Bstr(const Bstr& other) : Bstr(other.m_text ? Bstr(other.view()) : Bstr()) {}
    Bstr(Bstr&& other) noexcept : m_text(std::exchange(other.m_text, nullptr)) {}
    ~Bstr() { SysFreeString(m_text); }

    Bstr& operator=(Bstr other) noexcept
    {
        std::swap(m_text, other.m_text);
        return *this;
    }

    BSTR get() const noexcept { return m_text; }
    std::wstring_view view() const noexcept { return viewOf(m_text); }
    std::wstring str() const { return std::wstring(view()); }
    bool empty() const noexcept { return SysStringLen(m_text) == 0; }

    /// The emptied place for an out-parameter.
    BSTR* put() noexcept
    {
        SysFreeString(std::exchange(m_text, nullptr));
        return &m_text;
    }

    /// Gives the string away, for example through an out-parameter.
    BSTR detach() noexcept { return std::exchange(m_text, nullptr); }

private:
    BSTR m_text = nullptr;
};

/// A BSTR that stands in the program itself: it costs no allocation and is never freed. Only for in-parameters.
template <std::size_t N>
struct BstrLiteral {
    consteval BstrLiteral(const wchar_t (&literal)[N]) : byteCount((N - 1) * sizeof(wchar_t))
    {
        for (std::size_t i = 0; i < N; ++i)
            text[i] = literal[i];
    }

    BSTR get() const noexcept { return const_cast<BSTR>(text); }

    alignas(8) std::uint32_t padding = 0;
    std::uint32_t byteCount; // directly before the text, as SysStringLen expects it
    wchar_t text[N]{};
};

} // namespace morvane
