// How the log writes values.
#pragma once

#include "host/host.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace morvane::testing {

inline std::string hex(std::int64_t value)
{
    char text[24];
    std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(value));
    return text;
}

/// The tests' texts are ASCII.
inline std::string narrow(std::wstring_view text)
{
    std::string result;
    for (wchar_t c : text)
        result += c < 128 ? static_cast<char>(c) : '?';
    return result;
}

inline std::string toText(const SkinRect& r)
{
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

} // namespace morvane::testing
