// The lower half of the script parser: replacement of %NAME% and the words of the language.
#pragma once

#include "module/registration/script.h"

namespace morvane::registration {

/// A script after replacement; every character remembers where it came from.
struct ExpandedText {
    std::u16string text;
    std::vector<Position> origins; // one per character of `text`, and one for its end
};

/// Puts replacements in place of %NAME%, and one percent sign for two. Throws ScriptError for an unknown name.
ExpandedText expand(std::u16string_view script, const Replacements& replacements);

/// One word: a run of characters between spaces, or the content of quotes.
struct Word {
    std::u16string text;
    bool quoted = false;
    bool atEnd = false; // behind the last word
    Position position;

    /// Unquoted and exactly this.
    bool is(std::u16string_view symbol) const noexcept { return !quoted && !atEnd && text == symbol; }
    /// Unquoted and this, letters in any case.
    bool isKeyword(std::u16string_view keyword) const noexcept;
};

bool equalIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept;

/// Takes a script apart into words, one ahead.
class WordReader {
public:
    explicit WordReader(ExpandedText script);

    const Word& current() const noexcept { return m_current; }
    /// The current word; moves on to the next.
    Word take();

private:
    void skipSpace();
    void readWord();
    void readQuoted();

    ExpandedText m_script;
    std::size_t m_next = 0;
    Word m_current;
};

} // namespace morvane::registration
