#include "tools/describe/json_writer.h"

#include "host/windows_headers.h"

#include <cstdio>

namespace describe {

namespace {

std::string utf8Of(std::wstring_view text)
{
    const int count = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), count, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), count, result.data(), size, nullptr, nullptr);
    return result;
}

} // namespace

void JsonWriter::begin(char brace)
{
    raw({&brace, 1});
    m_needsComma = false;
}

void JsonWriter::end(char brace)
{
    m_text += brace;
    m_needsComma = true;
}

void JsonWriter::raw(std::string_view text)
{
    if (m_needsComma)
        m_text += ",\n";
    m_text += text;
    m_needsComma = true;
}

void JsonWriter::quoted(std::string_view utf8)
{
    std::string result = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            result += {'\\', c};
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
            result += escaped;
        } else {
            result += c;
        }
    }
    raw(result + '"');
}

JsonWriter& JsonWriter::key(std::string_view name)
{
    quoted(name);
    m_text += ": ";
    m_needsComma = false;
    return *this;
}

JsonWriter& JsonWriter::key(std::wstring_view name)
{
    return key(std::string_view(utf8Of(name)));
}

void JsonWriter::value(std::wstring_view text)
{
    quoted(utf8Of(text));
}

} // namespace describe
