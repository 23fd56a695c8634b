#include "module/registration/script_reader.h"

#include <algorithm>

namespace morvane::registration {

namespace {

bool isSpace(char16_t c) noexcept
{
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

char16_t lower(char16_t c) noexcept
{
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

void advance(Position& at, char16_t past) noexcept
{
    if (past == u'\n') {
        ++at.line;
        at.column = 1;
    } else {
        ++at.column;
    }
}

} // namespace

bool equalIgnoringCase(std::u16string_view a, std::u16string_view b) noexcept
{
    return std::ranges::equal(a, b, {}, lower, lower);
}

bool Word::isKeyword(std::u16string_view keyword) const noexcept
{
    return !quoted && !atEnd && equalIgnoringCase(text, keyword);
}

ExpandedText expand(std::u16string_view script, const Replacements& replacements)
{
    ExpandedText result;
    Position at;
    const auto append = [&](std::u16string_view text) {
        result.text += text;
        result.origins.insert(result.origins.end(), text.size(), at);
    };
    for (std::size_t i = 0; i < script.size(); ++i) {
        if (script[i] != u'%') {
            append(script.substr(i, 1));
            advance(at, script[i]);
            continue;
        }
        const std::size_t close = script.find(u'%', i + 1);
        if (close == std::u16string_view::npos)
            throw ScriptError(at, "a percent sign without a second one");
        const std::u16string_view name = script.substr(i + 1, close - i - 1);
        const auto replacement = replacements.find(name);
        if (name.empty())
            append(u"%");
        else if (replacement != replacements.end())
            append(replacement->second);
        else
            throw ScriptError(at, "nothing is registered for this name between percent signs");
        for (; i < close; ++i)
            advance(at, script[i]);
        advance(at, u'%');
    }
    result.origins.push_back(at);
    return result;
}

WordReader::WordReader(ExpandedText script) : m_script(std::move(script))
{
    take();
}

Word WordReader::take()
{
    Word taken = std::move(m_current);
    m_current = Word{};
    skipSpace();
    m_current.position = m_script.origins[m_next];
    if (m_next == m_script.text.size())
        m_current.atEnd = true;
    else if (m_script.text[m_next] == u'\'')
        readQuoted();
    else
        readWord();
    return taken;
}

void WordReader::skipSpace()
{
    while (m_next < m_script.text.size() && isSpace(m_script.text[m_next]))
        ++m_next;
}

// Braces and equals signs are words only when they stand alone: "{9D16...}" is a name.
void WordReader::readWord()
{
    while (m_next < m_script.text.size() && !isSpace(m_script.text[m_next])) {
        if (m_script.text[m_next] == u'\'')
            throw ScriptError(m_script.origins[m_next], "a quote inside a word");
        m_current.text += m_script.text[m_next++];
    }
}

void WordReader::readQuoted()
{
    m_current.quoted = true;
    for (++m_next; m_next < m_script.text.size(); ++m_next) {
        if (m_script.text[m_next] == u'\'' && m_script.text.compare(m_next, 2, u"''") == 0)
            ++m_next; // two quotes stand for one
        else if (m_script.text[m_next] == u'\'') {
            ++m_next;
            return;
        }
        m_current.text += m_script.text[m_next];
    }
    throw ScriptError(m_current.position, "the quoted text does not end");
}

} // namespace morvane::registration
