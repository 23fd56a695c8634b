#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/test_support.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using namespace test;
using morvane::Bstr;
using morvane::ComPtr;
using morvane::Instance;

class TextStyleTest : public testing::Test {
protected:
    TextStyleTest() : m_style(Instance<TextStyle>::make())
    {
        m_device.resize({300, 100});
        clear();
    }
    ~TextStyleTest() override { setCurrentScale(Scale()); }

    void clear() { fillRect(m_device.renderDC().canvas(), {0, 0, 300, 100}, kWhite); }

    /// The smallest rectangle around everything that is not white.
    Rect ink()
    {
        Rect box;
        const ConstPixelView pixels = m_device.surface()->pixels();
        for (int y = 0; y < pixels.height; ++y)
            for (int x = 0; x < pixels.width; ++x)
                if (pixels.at(x, y) != kWhite)
                    box = box.united(Rect::at({x, y}, {1, 1}));
        return box;
    }

    Rect measured(const wchar_t* text, const Rect& room)
    {
        SkinRect calculated{};
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(m_style->RenderDrawText(&m_device.renderDC(), Bstr(text).get(), morvane::toSkinRect(room),
                                          VARIANT_FALSE, -1, &calculated, &done),
                  S_OK);
        EXPECT_EQ(done, VARIANT_TRUE);
        return morvane::toRect(calculated);
    }

    void draw(const wchar_t* text, const Rect& rect)
    {
        clear();
        m_style->draw(m_device.renderDC().canvas(), rect, text, m_device.scale());
    }

    Surface shown()
    {
        Surface copy(m_device.size());
        copyImage({copy.view(), {}, copy.view().bounds()}, {}, m_device.surface()->pixels());
        return copy;
    }

    int differingPixels(const Surface& other)
    {
        const ConstPixelView pixels = m_device.surface()->pixels();
        int count = 0;
        for (int y = 0; y < pixels.height; ++y)
            for (int x = 0; x < pixels.width; ++x)
                count += pixels.at(x, y) != other.view().at(x, y);
        return count;
    }

    RenderDevice m_device;
    ComPtr<TextStyle> m_style;
};

TEST_F(TextStyleTest, MeasuringDrawsNothingAndWhatIsDrawnFitsTheMeasure)
{
    m_style->put_nVAlign(0);
    for (const wchar_t* text : {L"Hello, World", L"jgpqy|", L"WWWW", L"\x4E2D\x6587 mixed"}) {
        clear();
        const Rect box = measured(text, {10, 20, 290, 90});
        EXPECT_TRUE(ink().isEmpty());
        draw(text, {10, 20, 290, 90});
        const Rect inked = ink();
        EXPECT_FALSE(inked.isEmpty());
        EXPECT_TRUE(box.inflated(1).contains(inked)) << "ink beyond the measured box";
        EXPECT_GT(inked.width(), box.width() * 3 / 4) << "the measured box is much too wide";
    }
}

TEST_F(TextStyleTest, ATextInItsMeasuredRectangleIsNotTrimmed)
{
    for (const wchar_t* text : {L"PushButton", L"Tabs and such, 1234", L"i"}) {
        const int width = measured(text, {0, 0, 1000, 1000}).width();
        draw(text, {0, 0, width, 40});
        const Rect tight = ink();
        draw(text, {0, 0, width + 50, 40});
        EXPECT_EQ(tight, ink());
    }
}

TEST_F(TextStyleTest, DrawsWithoutARectangleToFillWhateverTheFlagSays)
{
    VARIANT_BOOL done = VARIANT_FALSE;
    const Bstr text(L"Draw");
    m_style->RenderDrawText(&m_device.renderDC(), text.get(), {0, 0, 100, 30}, VARIANT_FALSE, 0, nullptr, &done);
    EXPECT_FALSE(ink().isEmpty());
    clear();
    SkinRect calculated{};
    m_style->RenderDrawText(&m_device.renderDC(), text.get(), {0, 0, 100, 30}, VARIANT_TRUE, -1, &calculated, &done);
    EXPECT_FALSE(ink().isEmpty());
    EXPECT_GT(calculated.right, 0);
}

TEST_F(TextStyleTest, OnADeviceContextItMeasuresAndDrawsTheSame)
{
    const morvane::WindowDc screen(nullptr);
    SkinRect calculated{};
    VARIANT_BOOL done = VARIANT_FALSE;
    const Bstr text(L"PushButton");
    m_style->DrawText(reinterpret_cast<hyper>(screen.get()), text.get(), {0, 0, 1000, 1000}, VARIANT_FALSE, -1,
                      &calculated, &done);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(morvane::toRect(calculated), measured(L"PushButton", {0, 0, 1000, 1000}));
    DibSurface target({100, 30});
    fillRect(target.canvas(), {0, 0, 100, 30}, kWhite);
    m_style->DrawText(reinterpret_cast<hyper>(target.dc()), text.get(), {0, 0, 100, 30}, VARIANT_TRUE, -1, nullptr,
                      &done);
    EXPECT_EQ(done, VARIANT_TRUE);
    draw(L"PushButton", {0, 0, 100, 30});
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 100; ++x)
            ASSERT_EQ(target.pixels().at(x, y) | 0xFF000000u, m_device.surface()->pixels().at(x, y));
}

TEST_F(TextStyleTest, LongTextsWrapAndTakeMoreLines)
{
    m_style->put_bSingleLine(VARIANT_FALSE);
    const Rect one = measured(L"several words in a row", {0, 0, 1000, 1000});
    const Rect wrapped = measured(L"several words in a row", {0, 0, one.width() / 2 + 5, 1000});
    EXPECT_GE(wrapped.height(), 2 * one.height());
    EXPECT_LE(wrapped.width(), one.width() / 2 + 5);
}

TEST_F(TextStyleTest, AlignmentAndOffsetsPlaceTheText)
{
    const Rect box{50, 10, 250, 90};
    m_style->put_nHAlign(0);
    m_style->put_nVAlign(0);
    draw(L"Word", box);
    const Rect nearEdge = ink();
    m_style->put_nLeftOffset(20);
    m_style->put_nTopOffset(5);
    draw(L"Word", box);
    EXPECT_EQ(ink(), nearEdge.shifted(20, 5));
    m_style->put_nLeftOffset(0);
    m_style->put_nHAlign(2);
    m_style->put_nVAlign(2);
    draw(L"Word", box);
    EXPECT_NEAR(ink().right, box.right, 2);
    EXPECT_GT(ink().bottom, box.bottom - 8);
    m_style->put_nHAlign(1);
    draw(L"Word", box);
    EXPECT_NEAR(ink().left - box.left, box.right - ink().right, 3);
    m_style->put_bRightToLeft(VARIANT_TRUE);
    m_style->put_nHAlign(0);
    draw(L"Word", box);
    EXPECT_NEAR(ink().right, box.right, 2);
}

TEST_F(TextStyleTest, FontsScaleWithTheDevice)
{
    const Rect small = measured(L"Scaling text", {0, 0, 1000, 1000});
    m_device.setScale(Scale(200));
    const Rect large = measured(L"Scaling text", {0, 0, 1000, 1000});
    EXPECT_NEAR(large.width(), 2 * small.width(), 4);
    EXPECT_NEAR(large.height(), 2 * small.height(), 4);
}

TEST_F(TextStyleTest, ANewFontDescriptionShowsAtOnce)
{
    const auto font = Instance<Font>::make();
    m_style->put_fontExPtr(font.get());
    const int before = measured(L"Font", {0, 0, 1000, 1000}).width();
    LOGFONTW description = font->logFont();
    description.lfHeight = -30;
    font->setLogFont(description);
    EXPECT_GT(measured(L"Font", {0, 0, 1000, 1000}).width(), 2 * before);
}

TEST_F(TextStyleTest, AFontsWidthIsThatOfItsCharactersAndTheirRoom)
{
    const auto font = Instance<Font>::make();
    m_style->put_fontExPtr(font.get());
    LOGFONTW description = font->logFont();
    wcscpy(description.lfFaceName, L"Liberation Sans");
    description.lfHeight = -20;
    font->setLogFont(description);
    const int normal = measured(L"Width of it", {0, 0, 1000, 1000}).width();
    description.lfWidth = 20;
    font->setLogFont(description);
    const Rect wide = measured(L"Width of it", {0, 0, 1000, 1000});
    EXPECT_GT(wide.width(), normal * 3 / 2);
    draw(L"Width of it", {0, 0, 300, 100});
    EXPECT_NEAR(ink().width(), wide.width(), 8);
    description.lfWidth = 1000000000;
    font->setLogFont(description);
    EXPECT_GT(measured(L"Width of it", {0, 0, 1000, 1000}).width(), 0) << "cut to what can be drawn";
}

TEST_F(TextStyleTest, CharactersStandUprightInTheirLineWhateverAFontsAngle)
{
    const auto font = Instance<Font>::make();
    m_style->put_fontExPtr(font.get());
    draw(L"Upright", {0, 0, 200, 60});
    const Surface before = shown();
    LOGFONTW description = font->logFont();
    description.lfEscapement = description.lfOrientation = 900;
    font->setLogFont(description);
    draw(L"Upright", {0, 0, 200, 60});
    EXPECT_EQ(differingPixels(before), 0);
    hyper handle = 0;
    font->GetHFont(&handle);
    LOGFONTW system{};
    GetObjectW(reinterpret_cast<HFONT>(handle), sizeof system, &system);
    EXPECT_EQ(system.lfEscapement, 900) << "who draws by the system gets what was described";
}

TEST_F(TextStyleTest, AUsersFormatBreaksLinesAsTheSystemDoes)
{
    const auto height = [&](long format) {
        SkinRect extent{};
        VARIANT_BOOL done = VARIANT_FALSE;
        m_style->RenderDrawText(&m_device.renderDC(), Bstr(L"one two\nthree").get(), {0, 0, 30, 100}, VARIANT_FALSE,
                                format, &extent, &done);
        return extent.bottom;
    };
    const long one = height(DT_SINGLELINE);
    EXPECT_EQ(height(DT_CENTER), 2 * one) << "where the text says so";
    EXPECT_EQ(height(DT_WORDBREAK), 3 * one);
}

TEST_F(TextStyleTest, PrefixesUnderlineOnlyWhenShown)
{
    m_style->put_nVAlign(0);
    m_style->put_bHotkeyPrefixShow(VARIANT_TRUE);
    const int hidden = measured(L"&Ok", {0, 0, 1000, 1000}).width();
    draw(L"&Oo", {0, 0, 100, 40});
    const int underlined = ink().bottom;
    m_style->put_bHotkeyPrefixShow(VARIANT_FALSE);
    EXPECT_GT(measured(L"&Ok", {0, 0, 1000, 1000}).width(), hidden);
    draw(L"Oo", {0, 0, 100, 40});
    EXPECT_LT(ink().bottom, underlined);
}

TEST_F(TextStyleTest, SmallTextIsSmoothAndKeepsTheSurfacesAlpha)
{
    DibSurface clear({60, 20});
    m_style->draw(clear.canvas(), {0, 0, 60, 20}, L"Smooth", Scale());
    bool hasPartial = false;
    const ConstPixelView pixels = clear.pixels();
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const int alpha = alphaOf(pixels.at(x, y));
            hasPartial = hasPartial || (alpha > 30 && alpha < 220);
            ASSERT_LE(redOf(pixels.at(x, y)), alpha);
        }
    }
    EXPECT_TRUE(hasPartial);
    EXPECT_EQ(pixels.at(59, 0), 0u);
}

TEST_F(TextStyleTest, WhatTheSystemDrawsLooksTheSameWhetherItWasFirstSeenInPartOrWhole)
{
    const std::wstring word = L"\x05E9\x05DC\x05D5\x05DD ";
    std::wstring many;
    for (int i = 0; i < 500; ++i)
        many += word; // too large to be kept
    m_style->put_nStringTrimming(0);
    const Rect room{10, 10, 290, 60};
    for (const std::wstring& text : {word, many}) {
        draw(text.c_str(), room);
        const Surface whole = shown();
        ASSERT_GT(ink().width(), 20);
        m_style->setFont(nullptr);
        FontCache::instance().clear();
        clear();
        m_style->draw(m_device.renderDC().canvas().clippedTo({15, 0, 25, 100}), room, text, m_device.scale());
        ASSERT_TRUE((Rect{15, 0, 25, 100}.contains(ink())));
        draw(text.c_str(), room);
        EXPECT_EQ(differingPixels(whole), 0);
    }
}

TEST_F(TextStyleTest, AVerticalTextIsHigherThanWide)
{
    m_style->put_bVertDraw(VARIANT_TRUE);
    const Rect box = measured(L"Vertical", {0, 0, 1000, 1000});
    EXPECT_GT(box.height(), 2 * box.width());
    draw(L"Vertical", {100, 0, 130, 100});
    EXPECT_GT(ink().height(), 2 * ink().width());
}

TEST_F(TextStyleTest, AShadowLiesBesideTheTextAndAnOutlineAroundIt)
{
    m_style->put_clrText(0);
    m_style->put_clrShadow(kRedColour);
    const Rect plain = [&] {
        draw(L"Shade", {20, 20, 200, 60});
        return ink();
    }();
    m_style->put_nShadowHSpace(5);
    m_style->put_nShadowVSpace(3);
    m_style->put_nEffect(static_cast<short>(TextEffect::Shadow));
    draw(L"Shade", {20, 20, 200, 60});
    EXPECT_EQ(ink().left, plain.left);
    EXPECT_EQ(ink().top, plain.top);
    EXPECT_EQ(ink().right, plain.right + 5);
    EXPECT_EQ(ink().bottom, plain.bottom + 3);
    m_style->put_nEffect(static_cast<short>(TextEffect::Outline));
    draw(L"Shade", {20, 20, 200, 60});
    EXPECT_EQ(ink(), plain.inflated(1));
    m_style->put_nEffect(77); // unknown: none
    draw(L"Shade", {20, 20, 200, 60});
    EXPECT_EQ(ink(), plain);
}

TEST_F(TextStyleTest, OutlinesHaveTheirWidthAndShadowsTheirSoftnessAtEveryScale)
{
    const Rect room{40, 20, 280, 70};
    draw(L"Halo", room);
    const Rect plain = ink();
    TextLook look = m_style->look();
    look.effect = static_cast<short>(TextEffect::Outline);
    look.shadowColour = kRedColour;
    look.outlineSize = 4;
    m_style->setLook(look);
    draw(L"Halo", room);
    EXPECT_EQ(ink(), plain.inflated(4));
    draw(L"Halo", room);
    EXPECT_EQ(ink(), plain.inflated(4)) << "the same again, from what was kept";
    look.effect = static_cast<short>(TextEffect::Shadow);
    look.shadowX = 10;
    look.shadowY = -3;
    look.shadowOnPerPixel = 3;
    m_style->setLook(look);
    draw(L"Halo", room);
    const Rect soft = ink();
    EXPECT_EQ(soft.left, plain.left);
    EXPECT_NEAR(soft.right, plain.right + 13, 2) << "a soft edge fades out";
    EXPECT_GT(soft.right, plain.right + 10);
    EXPECT_NEAR(soft.top, plain.top - 6, 2);
    look.shadowOnPerPixel = 0;
    m_style->setLook(look);
    const Rect sharp = [&] {
        draw(L"Halo", room);
        return ink();
    }();
    EXPECT_EQ(sharp.right, plain.right + 10);
    look.effect = static_cast<short>(TextEffect::Outline);
    look.outlineSize = 32767; // cut to what can be computed
    m_style->setLook(look);
    draw(L"Halo", room);
    EXPECT_EQ(ink(), plain.inflated(16));
}

TEST_F(TextStyleTest, AnAmpersandIsShownUnderlinesOrIsLeftOutAsTheSkinSays)
{
    const auto widthFor = [&](const wchar_t* number) {
        const auto node = ConfigNode::create(L"style");
        node->setAttribute(L"HotkeyPrefixShow", number);
        VARIANT_BOOL done = VARIANT_FALSE;
        m_style->AccessConfig2(node->handle(), nullptr, VARIANT_TRUE, VARIANT_FALSE, &done);
        EXPECT_EQ(done, VARIANT_TRUE);
        m_style->put_nVAlign(0);
        draw(L"&ono", {0, 0, 100, 40});
        return measured(L"&ono", {0, 0, 1000, 1000}).width();
    };
    const int whole = widthFor(L"0");
    EXPECT_LT(widthFor(L"1"), whole);
    const int underlined = ink().bottom;
    EXPECT_LT(widthFor(L"2"), whole);
    EXPECT_LT(ink().bottom, underlined);
    VARIANT_BOOL has = VARIANT_FALSE;
    m_style->get_bHotkeyPrefixShow(&has);
    EXPECT_EQ(has, VARIANT_TRUE) << "access keys work, seen or not";
}

TEST_F(TextStyleTest, RightToLeftTextsAndMirroredControlsBeginAtTheOtherSide)
{
    const Rect room{20, 20, 280, 60};
    m_style->put_nHAlign(0);
    m_style->put_nLeftOffset(30);
    draw(L"abc", room);
    const Rect nearest = ink();
    EXPECT_GE(nearest.left, 50);
    EXPECT_LT(nearest.left, 56);
    clear();
    m_style->draw(m_device.renderDC().canvas(), room, L"abc", m_device.scale(), -1, true);
    EXPECT_LE(ink().right, 250) << "the offset changes sides, too";
    EXPECT_GT(ink().right, 244);
    m_style->put_nLeftOffset(0);
    m_style->put_bRightToLeft(VARIANT_TRUE);
    draw(L"abc", room);
    EXPECT_GT(ink().right, 274);
    m_style->put_nHAlign(1);
    draw(L"abc", room);
    EXPECT_NEAR(ink().left + ink().right, 300, 4) << "the centre stays the centre";
}

TEST_F(TextStyleTest, NothingIsDrawnOutsideTheRectangle)
{
    const Rect room{40, 30, 60, 38};
    m_style->put_nEffect(static_cast<short>(TextEffect::Outline));
    m_style->put_nStringTrimming(0);
    draw(L"Wide and much too long", room);
    EXPECT_TRUE(room.inflated(1).contains(ink()));
    draw(L"Text", {40, 30, 40, 38});
    EXPECT_TRUE(ink().isEmpty());
    m_style->put_nLeftOffset(300); // more than there is
    draw(L"Text", {40, 30, 100, 60});
    EXPECT_TRUE(ink().isEmpty());
}

TEST_F(TextStyleTest, ThePropertiesWayToDrawIsTheInterfacesWay)
{
    const SkinRect rect{10, 10, 290, 40};
    VARIANT_BOOL done = VARIANT_FALSE;
    clear();
    m_style->RenderDrawText(&m_device.renderDC(), Bstr(L"Same").get(), rect, VARIANT_TRUE, -1, nullptr, &done);
    const Rect byInterface = ink();
    ASSERT_FALSE(byInterface.isEmpty());
    clear();
    ComPtr<DrawsText> face;
    m_style->QueryInterface(kIidDrawsText, face.putVoid());
    ASSERT_TRUE(face);
    EXPECT_EQ(face->renderText(m_device.renderDC(), rect, L"Same", done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    EXPECT_EQ(ink(), byInterface);
    DibSurface target({300, 100});
    fillRect(target.canvas(), {0, 0, 300, 100}, kWhite);
    EXPECT_EQ(face->drawTextOn(reinterpret_cast<hyper>(target.dc()), rect, L"Same", done), S_OK);
    EXPECT_EQ(done, VARIANT_TRUE);
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 300; ++x)
            ASSERT_EQ(target.pixels().at(x, y) | 0xFF000000u, m_device.surface()->pixels().at(x, y));
    EXPECT_EQ(face->drawTextOn(0, rect, L"Same", done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    const auto alone = Instance<RenderDC>::make();
    EXPECT_EQ(face->renderText(*alone.get(), rect, L"Same", done), S_FALSE);
    EXPECT_EQ(done, VARIANT_FALSE);
}

TEST_F(TextStyleTest, OddArgumentsAreRefused)
{
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(m_style->RenderDrawText(nullptr, nullptr, {}, VARIANT_FALSE, -1, nullptr, &done), E_POINTER);
    EXPECT_EQ(m_style->RenderDrawText(&m_device.renderDC(), nullptr, {}, VARIANT_FALSE, -1, nullptr, nullptr),
              E_POINTER);
    EXPECT_EQ(m_style->DrawText(0, Bstr(L"x").get(), {0, 0, 5, 5}, VARIANT_TRUE, -1, nullptr, &done), S_OK);
    EXPECT_EQ(done, VARIANT_FALSE);
    m_style->put_nHAlign(77);
    m_style->put_nStringTrimming(-4);
    draw(L"Still drawn", {0, 0, 100, 30});
    EXPECT_FALSE(ink().isEmpty());
}

} // namespace
} // namespace ambrel
