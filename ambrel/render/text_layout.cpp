#include "ambrel/render/text_layout.h"

#include <algorithm>

namespace ambrel {

namespace {

constexpr wchar_t kEllipsis[] = L"\x2026";

/// The text without prefixes, and which character is to be underlined.
struct PlainText {
    std::wstring text;
    int underlined = -1;
};

PlainText withoutPrefixes(std::wstring_view text, HotkeyPrefix prefix)
{
    if (prefix == HotkeyPrefix::Plain || text.find(L'&') == std::wstring_view::npos)
        return {std::wstring(text), -1};
    PlainText plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && i + 1 < text.size()) {
            ++i;
            if (text[i] != L'&' && prefix == HotkeyPrefix::Underlined)
                plain.underlined = static_cast<int>(plain.text.size());
        }
        plain.text += text[i];
    }
    return plain;
}

/// Where lines may break without a space: between the characters of East Asian scripts.
bool isIdeographic(wchar_t c)
{
    return (c >= 0x3000 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7AF) || (c >= 0xF900 && c <= 0xFAFF);
}

bool isSpace(wchar_t c)
{
    return c == L' ' || c == L'\t';
}

/// How many characters from the front fit; not into the middle of a surrogate pair.
std::size_t fittingCount(std::wstring_view text, int width, const TextMeasure& font)
{
    std::size_t low = 0;
    std::size_t high = text.size();
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        if (font.width(text.substr(0, middle)) <= width)
            low = middle;
        else
            high = middle - 1;
    }
    if (low > 0 && low < text.size() && text[low] >= 0xDC00 && text[low] <= 0xDFFF)
        --low;
    return low;
}

/// The last place at or before `count` where a line may end; 0 when there is none.
std::size_t breakBefore(std::wstring_view text, std::size_t count)
{
    for (std::size_t i = std::min(count, text.size() - 1); i > 0; --i)
        if (isSpace(text[i]) || isSpace(text[i - 1]) || isIdeographic(text[i]) || isIdeographic(text[i - 1]))
            return i;
    return 0;
}

std::wstring_view withoutTrailingSpaces(std::wstring_view text)
{
    while (!text.empty() && isSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

/// "folders…\name": the last part stays, the front gives way.
std::wstring cutPath(std::wstring_view text, int width, const TextMeasure& font)
{
    const std::size_t slash = text.find_last_of(L"\\/");
    const std::wstring tail = kEllipsis + std::wstring(slash == std::wstring_view::npos ? L"" : text.substr(slash));
    const std::wstring_view head = text.substr(0, slash);
    const int room = width - font.width(tail);
    if (room < 0)
        return std::wstring(text.substr(0, fittingCount(text, width - font.width(kEllipsis), font))) + kEllipsis;
    return std::wstring(head.substr(0, fittingCount(head, room, font))) + tail;
}

std::wstring cutLine(std::wstring_view text, int width, TextTrimming trimming, const TextMeasure& font)
{
    if (trimming == TextTrimming::EllipsisPath)
        return cutPath(text, width, font);
    const bool hasEllipsis = trimming == TextTrimming::EllipsisCharacter || trimming == TextTrimming::EllipsisWord;
    const bool wholeWords = trimming == TextTrimming::Word || trimming == TextTrimming::EllipsisWord;
    const int room = hasEllipsis ? std::max(0, width - font.width(kEllipsis)) : width;
    std::size_t count = fittingCount(text, room, font);
    if (const std::size_t word = wholeWords ? breakBefore(text, count) : 0; word > 0)
        count = word;
    const std::wstring kept(withoutTrailingSpaces(text.substr(0, count)));
    return hasEllipsis ? kept + kEllipsis : kept;
}

class LayoutBuilder {
public:
    LayoutBuilder(const PlainText& plain, int width, const TextFormat& format, const TextMeasure& font)
        : m_plain(plain), m_width(width), m_format(format), m_font(font)
    {
    }

    TextLayout build()
    {
        if (m_format.isSingleLine)
            addSingleLine();
        else
            addParagraphs();
        m_layout.size.height = static_cast<int>(m_layout.lines.size()) * m_font.lineHeight();
        return std::move(m_layout);
    }

private:
    bool isTooWide(int width) const { return m_width > 0 && width > m_width; }

    void addSingleLine()
    {
        const PlainText line = onOneLine();
        const int width = m_font.width(line.text);
        if (isTooWide(width) && m_format.trimming != TextTrimming::None) {
            const std::wstring cut = cutLine(line.text, m_width, m_format.trimming, m_font);
            add(cut, placeInCut(line, cut), m_font.width(cut));
        } else {
            add(line.text, line.underlined, width);
        }
    }

    PlainText onOneLine() const
    {
        PlainText line;
        for (std::size_t i = 0; i < m_plain.text.size(); ++i) {
            if (static_cast<int>(i) == m_plain.underlined)
                line.underlined = static_cast<int>(line.text.size());
            if (const wchar_t c = m_plain.text[i]; c != L'\r')
                line.text += c == L'\n' ? L' ' : c;
        }
        return line;
    }

    /// Where the underlined character is after something was cut out of the middle or the end; -1 when it is gone.
    static int placeInCut(const PlainText& line, const std::wstring& cut)
    {
        const auto end = std::mismatch(cut.begin(), cut.end(), line.text.begin(), line.text.end()).first;
        if (line.underlined < 0 || line.underlined < end - cut.begin())
            return line.underlined;
        const auto kept = std::mismatch(cut.rbegin(), cut.rend(), line.text.rbegin(), line.text.rend()).first;
        const int fromEnd = static_cast<int>(line.text.size()) - line.underlined;
        return fromEnd <= kept - cut.rbegin() ? static_cast<int>(cut.size()) - fromEnd : -1;
    }

    void addParagraphs()
    {
        const std::wstring_view all = m_plain.text;
        std::size_t begin = 0;
        while (begin <= all.size()) {
            const std::size_t end = std::min(all.find(L'\n', begin), all.size());
            std::wstring_view paragraph = all.substr(begin, end - begin);
            if (paragraph.ends_with(L'\r'))
                paragraph.remove_suffix(1);
            addWrapped(paragraph, begin);
            begin = end + 1;
        }
    }

    void addWrapped(std::wstring_view text, std::size_t offset)
    {
        while (m_format.wraps && isTooWide(m_font.width(withoutTrailingSpaces(text)))) {
            const std::size_t fitting = fittingCount(text, m_width, m_font);
            std::size_t count = breakBefore(text, fitting);
            if (count == 0)
                count = std::max<std::size_t>(fitting, 1); // one word wider than the line
            const std::wstring_view line = withoutTrailingSpaces(text.substr(0, count));
            add(line, underlinedFrom(offset), m_font.width(line));
            while (count < text.size() && isSpace(text[count]))
                ++count;
            text.remove_prefix(count);
            offset += count;
            if (text.empty())
                return;
        }
        add(text, underlinedFrom(offset), m_font.width(text));
    }

    int underlinedFrom(std::size_t offset) const
    {
        return m_plain.underlined >= static_cast<int>(offset) ? m_plain.underlined - static_cast<int>(offset) : -1;
    }

    /// `underlined` may lie beyond the line: then it is on a later one.
    void add(std::wstring_view text, int underlined, int width)
    {
        TextLine line{std::wstring(text), width};
        if (underlined >= 0 && underlined < static_cast<int>(text.size())) {
            const auto index = static_cast<std::size_t>(underlined);
            line.underlined = underlined;
            line.underlineLeft = m_font.width(text.substr(0, index));
            line.underlineWidth = m_font.width(text.substr(index, 1));
        }
        m_layout.size.width = std::max(m_layout.size.width, width);
        m_layout.lines.push_back(std::move(line));
    }

    const PlainText& m_plain;
    int m_width;
    const TextFormat& m_format;
    const TextMeasure& m_font;
    TextLayout m_layout;
};

std::size_t bytesOfText(const std::wstring& text)
{
    static const std::size_t inPlace = std::wstring().capacity();
    return text.capacity() > inPlace ? (text.capacity() + 1) * sizeof(wchar_t) : 0;
}

} // namespace

std::size_t bytesOf(const TextLayout& layout)
{
    std::size_t bytes = layout.lines.capacity() * sizeof(TextLine);
    for (const TextLine& line : layout.lines)
        bytes += bytesOfText(line.text);
    return bytes;
}

TextLayout layOutText(std::wstring_view text, int width, const TextFormat& format, const TextMeasure& font)
{
    if (text.empty())
        return {};
    const PlainText plain = withoutPrefixes(text, format.prefix);
    return LayoutBuilder(plain, width, format, font).build();
}

} // namespace ambrel
