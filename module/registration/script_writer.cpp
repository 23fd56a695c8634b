#include "module/registration/script_reader.h"

#include <algorithm>

namespace morvane::registration {

namespace {

std::u16string ascii(const std::string& text)
{
    return {text.begin(), text.end()};
}

/// The text in quotes; quotes and percent signs in it are doubled.
std::u16string quoted(std::u16string_view text)
{
    std::u16string result = u"'";
    for (char16_t c : text)
        result.append(c == u'\'' || c == u'%' ? 2 : 1, c);
    result += u'\'';
    return result;
}

/// Names that the reader would take for something else stand in quotes.
std::u16string nameText(std::u16string_view name)
{
    constexpr std::u16string_view kReserved[] = {u"{", u"}", u"=", u"val", u"NoRemove", u"ForceRemove"};
    const bool reserved =
        std::ranges::any_of(kReserved, [&](std::u16string_view word) { return equalIgnoringCase(word, name); });
    const bool plain = !name.empty() && name.find_first_of(u" \t\r\n'%") == std::u16string_view::npos;
    return plain && !reserved ? std::u16string(name) : quoted(name);
}

std::u16string bytesText(const Bytes& bytes)
{
    constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
    std::u16string text;
    for (std::uint8_t byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::u16string dataText(const Data& data)
{
    if (const auto* text = std::get_if<std::u16string>(&data))
        return u"s " + quoted(*text);
    if (const auto* number = std::get_if<std::uint32_t>(&data))
        return u"d " + ascii(std::to_string(*number));
    return u"b '" + bytesText(std::get<Bytes>(data)) + u"'";
}

void writeKey(std::u16string& out, const Key& key, std::size_t depth)
{
    const std::u16string indent(depth * 4, u' ');
    out += indent;
    if (key.removal != Removal::Whole)
        out += key.removal == Removal::NoRemove ? u"NoRemove " : u"ForceRemove ";
    out += nameText(key.name);
    if (key.defaultValue)
        out += u" = " + dataText(*key.defaultValue);
    out += u"\n";
    if (key.values.empty() && key.keys.empty())
        return;
    out += indent + u"{\n";
    for (const NamedValue& value : key.values)
        out += indent + u"    val " + nameText(value.name) + u" = " + dataText(value.data) + u"\n";
    for (const Key& below : key.keys)
        writeKey(out, below, depth + 1);
    out += indent + u"}\n";
}

} // namespace

std::u16string writeScript(const Script& script)
{
    std::u16string out;
    for (const Section& section : script) {
        out += std::u16string(abbreviationOf(section.root)) + u"\n{\n";
        for (const Key& key : section.keys)
            writeKey(out, key, 1);
        out += u"}\n";
    }
    return out;
}

} // namespace morvane::registration
