#include "ambrel/render/text_layout.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

/// Every character is ten pixels wide, every line twelve high.
class TenPixelFont final : public TextMeasure {
public:
    int width(std::wstring_view text) const override { return static_cast<int>(text.size()) * 10; }
    int lineHeight() const override { return 12; }
};

std::vector<std::wstring> linesOf(std::wstring_view text, int width, TextFormat format)
{
    std::vector<std::wstring> lines;
    for (const TextLine& line : layOutText(text, width, format, TenPixelFont()).lines)
        lines.push_back(line.text);
    return lines;
}

using Lines = std::vector<std::wstring>;

TEST(TextLayoutTest, WrapsAtSpacesAndBreaksWordsOnlyWhenTheyAloneAreTooWide)
{
    const TextFormat wrapped{.isSingleLine = false};
    EXPECT_EQ(linesOf(L"one two three", 80, wrapped), (Lines{L"one two", L"three"}));
    EXPECT_EQ(linesOf(L"one  two", 40, wrapped), (Lines{L"one", L"two"}));
    EXPECT_EQ(linesOf(L"abcdefgh", 30, wrapped), (Lines{L"abc", L"def", L"gh"}));
    EXPECT_EQ(linesOf(L"a\r\n\nb", 30, wrapped), (Lines{L"a", L"", L"b"}));
    EXPECT_EQ(linesOf(L"\x4E2D\x6587\x6D4B\x8BD5", 25, wrapped), (Lines{L"\x4E2D\x6587", L"\x6D4B\x8BD5"}));
    EXPECT_EQ(linesOf(L"long text", 0, wrapped), (Lines{L"long text"}));
    EXPECT_EQ(linesOf(L"one two\nthree", 40, {.isSingleLine = false, .wraps = false}), (Lines{L"one two", L"three"}));
    EXPECT_EQ(linesOf(L"ab", 5, wrapped), (Lines{L"a", L"b"})); // narrower than one character: still ends
}

TEST(TextLayoutTest, MeasuresTheWidestLineAndAllHeights)
{
    const TextLayout layout = layOutText(L"one two three", 80, {.isSingleLine = false}, TenPixelFont());
    EXPECT_EQ(layout.size, (morvane::Size{70, 24}));
    EXPECT_EQ(layOutText(L"", 80, {}, TenPixelFont()).size, morvane::Size{});
}

TEST(TextLayoutTest, ASingleLineIsCutAsTheTrimmingSays)
{
    const std::wstring text = L"first second";
    const auto cut = [&](TextTrimming trimming, int width) {
        return linesOf(text, width, {.trimming = trimming}).at(0);
    };
    EXPECT_EQ(cut(TextTrimming::None, 80), text);
    EXPECT_EQ(cut(TextTrimming::Character, 80), L"first se");
    EXPECT_EQ(cut(TextTrimming::Word, 80), L"first");
    EXPECT_EQ(cut(TextTrimming::EllipsisCharacter, 80), L"first s\x2026");
    EXPECT_EQ(cut(TextTrimming::EllipsisWord, 80), L"first\x2026");
    EXPECT_EQ(cut(TextTrimming::EllipsisCharacter, 120), text);
    EXPECT_EQ(cut(TextTrimming::EllipsisCharacter, 5), L"\x2026");
    EXPECT_EQ(linesOf(L"C:\\folder\\deep\\name", 90, {.trimming = TextTrimming::EllipsisPath}).at(0),
              L"C:\\\x2026\\name");
}

TEST(TextLayoutTest, PrefixesAreUnderlinedHiddenOrShown)
{
    const TextLayout shown = layOutText(L"Sa&ve && go", 0, {.prefix = HotkeyPrefix::Underlined}, TenPixelFont());
    EXPECT_EQ(shown.lines[0].text, L"Save & go");
    EXPECT_EQ(shown.lines[0].underlined, 2);
    const TextLayout hidden = layOutText(L"Sa&ve", 0, {.prefix = HotkeyPrefix::Hidden}, TenPixelFont());
    EXPECT_EQ(hidden.lines[0].text, L"Save");
    EXPECT_EQ(hidden.lines[0].underlined, -1);
    EXPECT_EQ(linesOf(L"R&D", 0, {}), (Lines{L"R&D"}));
    EXPECT_EQ(linesOf(L"end&", 0, {.prefix = HotkeyPrefix::Underlined}), (Lines{L"end&"}));
}

TEST(TextLayoutTest, TheUnderlinedCharacterIsFoundOnALaterLine)
{
    const TextLayout layout =
        layOutText(L"one t&wo", 40, {.prefix = HotkeyPrefix::Underlined, .isSingleLine = false}, TenPixelFont());
    ASSERT_EQ(layout.lines.size(), 2u);
    EXPECT_EQ(layout.lines[0].underlined, -1);
    EXPECT_EQ(layout.lines[1].underlined, 1);
}

TEST(TextLayoutTest, WhatIsLeftOutOfALineMovesOrTakesAwayTheUnderline)
{
    const auto underlined = [](std::wstring_view text, int width, TextTrimming trimming) {
        const TextFormat format{.trimming = trimming, .prefix = HotkeyPrefix::Underlined};
        const TextLayout layout = layOutText(text, width, format, TenPixelFont());
        const TextLine& line = layout.lines.at(0);
        return line.underlined < 0 ? L'-' : line.text.at(static_cast<std::size_t>(line.underlined));
    };
    EXPECT_EQ(underlined(L"one\r\n&two", 0, TextTrimming::None), L't');
    EXPECT_EQ(underlined(L"long &name", 70, TextTrimming::EllipsisCharacter), L'n');
    EXPECT_EQ(underlined(L"long &name", 60, TextTrimming::EllipsisCharacter), L'-') << "not the ellipsis";
    EXPECT_EQ(underlined(L"C:\\&folder\\name", 100, TextTrimming::EllipsisPath), L'f');
    EXPECT_EQ(underlined(L"C:\\folder\\&name", 90, TextTrimming::EllipsisPath), L'n') << "it moved with the name";
    EXPECT_EQ(underlined(L"C:\\fold&er\\name", 90, TextTrimming::EllipsisPath), L'-');
}

TEST(TextLayoutTest, SurrogatePairsStayTogether)
{
    const std::wstring pairs = L"\xD83D\xDE00\xD83D\xDE01"; // two characters beyond the first plane, in UTF-16
    for (const std::wstring& line : linesOf(pairs, 30, {.isSingleLine = false}))
        EXPECT_EQ(line.size() % 2, 0u);
}

} // namespace
} // namespace ambrel
