// Property values as the text that skins store.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ambrel {

/// Whole numbers: decimal with an optional sign, or "0x" and hexadecimal digits (which may fill all 32 bits). Blanks
/// around the number are skipped; anything else, or a number outside 32 bits, is nothing.
std::optional<std::int32_t> parseLong(std::wstring_view text) noexcept;
std::wstring formatLong(std::int32_t value);

/// A decimal number with an optional fraction and exponent; a point whatever the user's locale. Finite, else nothing.
std::optional<double> parseDouble(std::wstring_view text) noexcept;
std::optional<float> parseFloat(std::wstring_view text) noexcept; // what is too large for a float is nothing
std::wstring formatFloat(float value);                            // the shortest text that reads back to the same value
std::wstring formatDouble(double value);
/// For people to read: at most six digits, without what binary fractions are off by.
std::wstring formatRounded(float value);

/// "1" and "0" as skins are written; also "true", "false" in any case and any other whole number, which is true unless
/// 0.
std::optional<bool> parseBool(std::wstring_view text) noexcept;
std::wstring_view formatBool(bool value) noexcept;

/// A colour 0x00BBGGRR, or 0x80 and a number for a system colour: "0x00FF00FF", or decimal.
std::optional<std::uint32_t> parseColor(std::wstring_view text) noexcept;
std::wstring formatColor(std::uint32_t color);

/// Without blanks, tabs and line ends around.
std::wstring_view trimmed(std::wstring_view text) noexcept;

} // namespace ambrel
