#include "ambrel/properties/value_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace ambrel {

namespace {

/// Numbers are ASCII; longer text or other characters are no number.
class NarrowText {
public:
    explicit NarrowText(std::wstring_view text) noexcept
    {
        if (text.size() > m_characters.size())
            return;
        for (const wchar_t c : text) {
            if (c <= 0 || c >= 0x80)
                return;
            m_characters[m_size++] = static_cast<char>(c);
        }
        m_isAscii = true;
    }

    bool empty() const noexcept { return !m_isAscii || m_size == 0; }
    std::string_view text() const noexcept { return {m_characters.data(), m_size}; }

private:
    std::array<char, 64> m_characters;
    std::size_t m_size = 0;
    bool m_isAscii = false;
};

template <class Value, class... Format>
std::optional<Value> parseWhole(std::string_view text, Format... format) noexcept
{
    Value value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, format...);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

bool takePrefix(std::string_view& text, std::string_view prefix) noexcept
{
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

/// Read as its own type: by way of a wider one it would be rounded twice.
template <class Value>
std::optional<Value> parseFraction(std::wstring_view text) noexcept
{
    const NarrowText narrow(trimmed(text));
    if (narrow.empty())
        return std::nullopt;
    std::string_view digits = narrow.text();
    if (takePrefix(digits, "+") && digits.starts_with('-'))
        return std::nullopt;
    const auto value = parseWhole<Value>(digits);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

template <class Value, class... Format>
std::wstring formatNumber(Value value, Format... format)
{
    std::array<char, 64> characters;
    const auto result = std::to_chars(characters.data(), characters.data() + characters.size(), value, format...);
    return std::wstring(characters.data(), result.ptr);
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) noexcept
{
    if (text.size() != lowerCase.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] - 'A' + 'a') : text[i];
        if (c != lowerCase[i])
            return false;
    }
    return true;
}

} // namespace

std::wstring_view trimmed(std::wstring_view text) noexcept
{
    constexpr std::wstring_view kBlanks = L" \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<std::int32_t> parseLong(std::wstring_view text) noexcept
{
    const NarrowText narrow(trimmed(text));
    if (narrow.empty())
        return std::nullopt;
    std::string_view digits = narrow.text();
    if (takePrefix(digits, "0x") || takePrefix(digits, "0X")) {
        const auto bits = parseWhole<std::uint32_t>(digits, 16);
        return bits ? std::optional(static_cast<std::int32_t>(*bits)) : std::nullopt;
    }
    if (takePrefix(digits, "+") && digits.starts_with('-'))
        return std::nullopt;
    return parseWhole<std::int32_t>(digits);
}

std::wstring formatLong(std::int32_t value)
{
    return formatNumber(value);
}

std::optional<double> parseDouble(std::wstring_view text) noexcept
{
    return parseFraction<double>(text);
}

std::optional<float> parseFloat(std::wstring_view text) noexcept
{
    if (const auto value = parseFraction<float>(text))
        return value;
    const auto wide = parseFraction<double>(text);
    return wide && std::abs(*wide) < 1 ? std::optional(0.0f) : std::nullopt; // too small for a float
}

std::wstring formatFloat(float value)
{
    return formatNumber(value);
}
std::wstring formatDouble(double value)
{
    return formatNumber(value);
}

std::wstring formatRounded(float value)
{
    return formatNumber(value, std::chars_format::general, 6);
}

std::optional<bool> parseBool(std::wstring_view text) noexcept
{
    if (const auto number = parseLong(text))
        return *number != 0;
    const NarrowText narrow(trimmed(text));
    if (narrow.empty())
        return std::nullopt;
    if (equalsIgnoringCase(narrow.text(), "true"))
        return true;
    if (equalsIgnoringCase(narrow.text(), "false"))
        return false;
    return std::nullopt;
}

std::wstring_view formatBool(bool value) noexcept
{
    return value ? L"1" : L"0";
}

std::optional<std::uint32_t> parseColor(std::wstring_view text) noexcept
{
    if (const auto value = parseLong(text))
        return static_cast<std::uint32_t>(*value);
    // Written as an unsigned decimal, system colours are above the range of a signed number.
    const NarrowText narrow(trimmed(text));
    return narrow.empty() ? std::nullopt : parseWhole<std::uint32_t>(narrow.text());
}

std::wstring formatColor(std::uint32_t color)
{
    constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
    std::wstring text = L"0x00000000";
    for (std::size_t i = text.size(); color != 0; color >>= 4)
        text[--i] = kDigits[color & 0xF];
    return text;
}

} // namespace ambrel
