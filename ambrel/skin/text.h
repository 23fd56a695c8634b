#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Small readers and writers of the texts in a package. All texts are UTF-8.
namespace ambrel::skin {

char loweredChar(char c);
std::string lowered(std::string_view text);

/// Length in bytes of the character at the beginning of `text`, 0 when it is no character XML allows in UTF-8.
std::size_t characterLength(std::string_view text);
bool isUtf8(std::string_view text);

/// The text for a message: anything but printable ASCII becomes '?', and long texts are cut.
std::string printable(std::string_view text);

/// A decimal number from `least` to `most`; `outOfRange` tells a number beyond them from no number at all.
struct IntegerText {
    std::optional<std::int32_t> value;
    bool outOfRange = false;
};
IntegerText parseInteger(std::string_view text, std::int32_t least, std::int32_t most);

/// "1", "-1" or "true"; "0" or "false". Nothing else.
std::optional<bool> parseBoolean(std::string_view text);

/// "0x" and eight hexadecimal digits, 0x00BBGGRR.
std::optional<std::uint32_t> parseColour(std::string_view text);
std::string formatColour(std::uint32_t colour);

/// Whether the text can be an element's or attribute's name: a letter or '_' (or any character beyond ASCII), then
/// also digits, '-', '.' and ':'.
bool isXmlName(std::string_view text);

} // namespace ambrel::skin
