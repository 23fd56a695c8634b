// JSON text, written piece by piece.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace describe {

/// Puts commas where they belong; that braces match is the caller's part.
class JsonWriter {
public:
    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    /// What follows is the value of this key of the present object.
    JsonWriter& key(std::string_view name);
    JsonWriter& key(std::wstring_view name);

    void value(std::wstring_view text);
    void value(std::int64_t number) { raw(std::to_string(number)); }
    void value(bool truth) { raw(truth ? "true" : "false"); }
    void null() { raw("null"); }

    const std::string& text() const { return m_text; } // UTF-8

private:
    void begin(char brace);
    void end(char brace);
    void raw(std::string_view text);
    void quoted(std::string_view utf8);

    std::string m_text;
    bool m_needsComma = false;
};

} // namespace describe
