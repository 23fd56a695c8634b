#include "ambrel/render/laid_out_texts.h"

#include <gtest/gtest.h>

#include <utility>

namespace ambrel {
namespace {

/// Every character is ten pixels wide, every line twelve high.
class CountingFont final : public TextMeasure {
public:
    int width(std::wstring_view text) const override
    {
        ++m_asked;
        return static_cast<int>(text.size()) * 10;
    }
    int lineHeight() const override { return 12; }

    bool wasAsked() { return std::exchange(m_asked, 0) != 0; }

private:
    mutable int m_asked = 0;
};

class LaidOutTextsTest : public testing::Test {
protected:
    /// Whether a text had to be laid out.
    bool makes(std::wstring_view text, int width, const TextFormat& format)
    {
        m_texts.layOut(text, width, format, m_font);
        return m_font.wasAsked();
    }

    CountingFont m_font;
    LaidOutTexts m_texts;
};

TEST_F(LaidOutTextsTest, GiveWhatLayingOutAnewGives)
{
    constexpr std::wstring_view kTexts[] = {L"",
                                            L"one",
                                            L"one two  three ",
                                            L"first\r\nsecond &line\n",
                                            L"&Save && go",
                                            L"C:\\a\\name",
                                            L"\x4E2D\x6587\x6D4B\x8BD5"};
    for (int round = 0; round < 2; ++round)
        for (const std::wstring_view text : kTexts)
            for (const int width : {-5, 0, 5, 25, 30, 60, 75, 150, 1000})
                for (int trimming = 0; trimming <= 5; ++trimming)
                    for (int prefix = 0; prefix <= 2; ++prefix)
                        for (const int lines : {0, 1, 2}) {
                            TextFormat format;
                            format.trimming = static_cast<TextTrimming>(trimming);
                            format.prefix = static_cast<HotkeyPrefix>(prefix);
                            format.isSingleLine = lines == 0;
                            format.wraps = lines == 1;
                            ASSERT_EQ(m_texts.layOut(text, width, format, m_font),
                                      layOutText(text, width, format, m_font))
                                << "text of " << text.size() << ", width " << width << ", trimming " << trimming
                                << ", prefix " << prefix << ", lines " << lines;
                        }
}

TEST_F(LaidOutTextsTest, TheSameTextIsLaidOutOnce)
{
    const TextFormat cut{.trimming = TextTrimming::EllipsisCharacter};
    EXPECT_TRUE(makes(L"some words", 50, cut));
    EXPECT_FALSE(makes(L"some words", 50, cut));
    EXPECT_TRUE(makes(L"some words", 60, cut));
    EXPECT_TRUE(makes(L"some words", 60, {.isSingleLine = false}));
    EXPECT_TRUE(makes(L"some word", 60, cut));
    EXPECT_FALSE(makes(L"some words", 50, cut)) << "the former ones are still there";
}

TEST_F(LaidOutTextsTest, ATextThatFitsHasOneLayoutForEveryRoomTrimmingAndAlignment)
{
    EXPECT_TRUE(makes(L"some words", 0, {})); // as it is measured
    EXPECT_FALSE(makes(L"some words", 100, {.trimming = TextTrimming::EllipsisWord}));
    EXPECT_FALSE(makes(L"some words", 500, {.horizontal = TextAlign::Centre, .isRightToLeft = true}));
    EXPECT_FALSE(makes(L"some words", 20, {})) << "cut at the edge, it is the same";
}

TEST_F(LaidOutTextsTest, EverNewTextsDoNotGrowWithoutEndAndOnesInUseStay)
{
    const TextFormat format;
    m_texts.layOut(L"in use", 0, format, m_font);
    for (int i = 0; i < 20000; ++i) {
        m_texts.layOut(L"counting " + std::to_wstring(i), 0, format, m_font);
        m_font.wasAsked();
        if (i % 100 == 0)
            ASSERT_FALSE(makes(L"in use", 0, format)) << i;
        ASSERT_LE(m_texts.bytes(), LaidOutTexts::kMostBytes);
    }
    EXPECT_FALSE(makes(L"counting 19999", 0, format));
    EXPECT_FALSE(makes(L"counting 19000", 0, format)) << "a window of a thousand texts";
    EXPECT_TRUE(makes(L"counting 10000", 0, format));
}

TEST_F(LaidOutTextsTest, ATextLargerThanAllRoomIsGoneWithTheNextOne)
{
    const std::wstring huge(LaidOutTexts::kMostBytes, L'x');
    EXPECT_TRUE(makes(huge, 0, {}));
    EXPECT_FALSE(makes(huge, 0, {}));
    EXPECT_TRUE(makes(L"small", 0, {}));
    EXPECT_LE(m_texts.bytes(), 1024u);
}

} // namespace
} // namespace ambrel
