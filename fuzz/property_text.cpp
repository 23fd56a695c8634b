// Any text as a property's value in a skin: numbers, Booleans, colours, hot keys (which are numbers), captions with
// access keys. What is understood is written and understood again.
#include "ambrel/properties/value_text.h"
#include "ambrel/window/access_key.h"
#include "fuzz/fuzz.h"

#include <cmath>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ambrel;
    // One byte per character is what mutation does best; a first 'W' widens them.
    const bool isWide = size > 0 && data[0] == 'W';
    std::wstring text;
    for (std::size_t i = isWide ? 1 : 0; i < size; ++i)
        text += static_cast<wchar_t>(isWide && i + 1 < size ? data[i] | data[i + 1] << 8 : data[i]);

    if (const auto number = parseLong(text))
        fuzz::require(parseLong(formatLong(*number)) == number, "a written number reads back equal");
    if (const auto number = parseDouble(text)) {
        fuzz::require(std::isfinite(*number), "a number is finite");
        fuzz::require(parseDouble(formatDouble(*number)) == number, "a written fraction reads back equal");
    }
    if (const auto number = parseFloat(text)) {
        fuzz::require(std::isfinite(*number), "a short number is finite");
        fuzz::require(parseFloat(formatFloat(*number)) == number, "a written short fraction reads back equal");
        fuzz::require(parseDouble(text).has_value(), "what fits a short fraction fits a long one");
    }
    if (const auto flag = parseBool(text))
        fuzz::require(parseBool(formatBool(*flag)) == flag, "a written truth reads back equal");
    if (const auto colour = parseColor(text))
        fuzz::require(parseColor(formatColor(*colour)) == colour, "a written colour reads back equal");
    const std::wstring_view middle = trimmed(text);
    fuzz::require(trimmed(middle) == middle, "what is trimmed stays as it is");
    const wchar_t key = accessKeyOf(text);
    fuzz::require(key == 0 || text.find(std::wstring{L'&', key}) != std::wstring_view::npos,
                  "an access key stands in the text");
    return 0;
}
