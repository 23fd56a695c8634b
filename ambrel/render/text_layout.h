// How a text is broken into lines and cut to a width. Portable: measuring is passed in.
#pragma once

#include "base/geometry.h"

#include <string>
#include <string_view>
#include <vector>

namespace ambrel {

enum class TextAlign { Near, Centre, Far }; // left/top, centre, right/bottom; stored in skins as 0, 1, 2

/// What happens to a line that is too long; stored in skins as 0 to 5.
enum class TextTrimming { None, Character, Word, EllipsisCharacter, EllipsisWord, EllipsisPath };

/// What an ampersand before a character means.
enum class HotkeyPrefix {
    Plain,      // nothing: it is shown
    Underlined, // it is left out and the character underlined; a doubled one is shown once
    Hidden,     // it is left out
};

struct TextFormat {
    TextAlign horizontal = TextAlign::Near;
    TextAlign vertical = TextAlign::Near;
    TextTrimming trimming = TextTrimming::None;
    HotkeyPrefix prefix = HotkeyPrefix::Plain;
    bool isSingleLine = true;
    bool wraps = true; // where there may be several lines; else they end where the text says so
    bool isRightToLeft = false;
    bool isVertical = false; // turned by 90 degrees clockwise, reading downwards

    friend bool operator==(const TextFormat&, const TextFormat&) = default;
};

/// What a layout asks of a font. Pixels.
class TextMeasure {
public:
    virtual int width(std::wstring_view text) const = 0;
    virtual int lineHeight() const = 0;

protected:
    ~TextMeasure() = default;
};

struct TextLine {
    std::wstring text;
    int width = 0;
    int underlined = -1;   // index of the underlined character, -1 for none
    int underlineLeft = 0; // from the line's left end
    int underlineWidth = 0;

    friend bool operator==(const TextLine&, const TextLine&) = default;
};

struct TextLayout {
    std::vector<TextLine> lines;
    morvane::Size size; // width of the widest line, height of all

    friend bool operator==(const TextLayout&, const TextLayout&) = default;
};

/// What a layout takes of the heap.
std::size_t bytesOf(const TextLayout& layout);

/// Breaks and cuts a text. `width` limits the lines (zero or less: no limit); a word that alone is wider is broken.
TextLayout layOutText(std::wstring_view text, int width, const TextFormat& format, const TextMeasure& font);

} // namespace ambrel
