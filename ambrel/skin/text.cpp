#include "ambrel/skin/text.h"

#include "ambrel/skin/limits.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace ambrel::skin {

char loweredChar(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lowered(std::string_view text)
{
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), loweredChar);
    return out;
}

namespace {

// The character that starts `text`, decoded; no value for a broken, overlong or cut sequence.
struct Decoded {
    std::uint32_t value;
    std::size_t length;
};

std::optional<Decoded> decode(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || text.size() < length)
        return std::nullopt;
    std::uint32_t value = length == 1 ? lead : lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80)
            return std::nullopt;
        value = value << 6 | (next & 0x3Fu);
    }
    constexpr std::uint32_t kLeastOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < kLeastOfLength[length])
        return std::nullopt;
    return Decoded{value, length};
}

bool isXmlCharacter(std::uint32_t value)
{
    return value >= 0x20 ? value < 0xD800 || (value > 0xDFFF && value < 0xFFFE) || (value > 0xFFFF && value < 0x110000)
                         : value == '\t' || value == '\n' || value == '\r';
}

bool isNameStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool isNameFollower(char c)
{
    return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
}

} // namespace

std::size_t characterLength(std::string_view text)
{
    const auto decoded = text.empty() ? std::nullopt : decode(text);
    return decoded && isXmlCharacter(decoded->value) ? decoded->length : 0;
}

bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string printable(std::string_view text)
{
    constexpr std::size_t kShown = 80;
    std::string out(text.substr(0, kShown));
    std::replace_if(
        out.begin(), out.end(), [](char c) { return c < 0x20 || c > 0x7E; }, '?');
    return text.size() > kShown ? out + "..." : out;
}

IntegerText parseInteger(std::string_view text, std::int32_t least, std::int32_t most)
{
    std::int64_t value = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size() || fault == std::errc::invalid_argument)
        return {};
    if (fault == std::errc::result_out_of_range || value < least || value > most)
        return {std::nullopt, true};
    return {static_cast<std::int32_t>(value), false};
}

std::optional<bool> parseBoolean(std::string_view text)
{
    if (text == "1" || text == "-1" || text == "true")
        return true;
    if (text == "0" || text == "false")
        return false;
    return std::nullopt;
}

std::optional<std::uint32_t> parseColour(std::string_view text)
{
    if (text.size() != 10 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X'))
        return std::nullopt;
    std::uint32_t value = 0;
    const auto [end, fault] = std::from_chars(text.data() + 2, text.data() + 10, value, 16);
    if (fault != std::errc() || end != text.data() + 10)
        return std::nullopt;
    return value;
}

std::string formatColour(std::uint32_t colour)
{
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "0x%08X", static_cast<unsigned>(colour));
    return buffer;
}

bool isXmlName(std::string_view text)
{
    return !text.empty() && text.size() <= kXmlNameBytes && isNameStart(text[0]) &&
           std::all_of(text.begin() + 1, text.end(), isNameFollower) && isUtf8(text);
}

} // namespace ambrel::skin
