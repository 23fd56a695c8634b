// The members of a text style that draw nothing by themselves: settings, flags, fonts, measures.
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/test_support.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace ambrel {
namespace {

using namespace test;
using morvane::Bstr;
using morvane::ComPtr;
using morvane::Instance;

/// A setting of the interface and the attribute under which skins keep it.
template <class Value>
struct Member {
    const wchar_t* attribute;
    HRESULT (STDMETHODCALLTYPE IVexTextStyle::*put)(Value);
    HRESULT (STDMETHODCALLTYPE IVexTextStyle::*get)(Value*);
};

constexpr Member<short> kNumbers[] = {
    {L"HAlign", &IVexTextStyle::put_nHAlign, &IVexTextStyle::get_nHAlign},
    {L"VAlign", &IVexTextStyle::put_nVAlign, &IVexTextStyle::get_nVAlign},
    {L"StringTrimming", &IVexTextStyle::put_nStringTrimming, &IVexTextStyle::get_nStringTrimming},
    {L"Effect", &IVexTextStyle::put_nEffect, &IVexTextStyle::get_nEffect},
    {L"ShadowH", &IVexTextStyle::put_nShadowHSpace, &IVexTextStyle::get_nShadowHSpace},
    {L"ShadowV", &IVexTextStyle::put_nShadowVSpace, &IVexTextStyle::get_nShadowVSpace},
    {L"ShadowPixel", &IVexTextStyle::put_nShadowOnPerPixel, &IVexTextStyle::get_nShadowOnPerPixel},
    {L"LeftOffset", &IVexTextStyle::put_nLeftOffset, &IVexTextStyle::get_nLeftOffset},
    {L"RightOffset", &IVexTextStyle::put_nRightOffset, &IVexTextStyle::get_nRightOffset},
    {L"TopOffset", &IVexTextStyle::put_nTopOffset, &IVexTextStyle::get_nTopOffset},
    {L"BottOffset", &IVexTextStyle::put_nBottomOffset, &IVexTextStyle::get_nBottomOffset},
};

constexpr Member<VARIANT_BOOL> kFlags[] = {
    {L"HotkeyPrefixShow", &IVexTextStyle::put_bHotkeyPrefixShow, &IVexTextStyle::get_bHotkeyPrefixShow},
    {L"SingleLine", &IVexTextStyle::put_bSingleLine, &IVexTextStyle::get_bSingleLine},
    {L"VertDraw", &IVexTextStyle::put_bVertDraw, &IVexTextStyle::get_bVertDraw},
    {L"RightToLeft", &IVexTextStyle::put_bRightToLeft, &IVexTextStyle::get_bRightToLeft},
};

constexpr Member<OLE_COLOR> kColours[] = {
    {L"clrText", &IVexTextStyle::put_clrText, &IVexTextStyle::get_clrText},
    {L"clrShadow", &IVexTextStyle::put_clrShadow, &IVexTextStyle::get_clrShadow},
};

class TextMembersTest : public testing::Test {
protected:
    TextMembersTest() : m_style(Instance<TextStyle>::make()) { m_device.resize({200, 60}); }
    ~TextMembersTest() override { setCurrentScale(Scale()); }

    /// Gives the style a value and finds it again: by the interface, in its node, and in a style that reads the node.
    template <class Value>
    void expectKept(const Member<Value>& member, Value value, const wchar_t* written)
    {
        IVexTextStyle& style = *m_style.get();
        m_style->SetModified(VARIANT_FALSE);
        ASSERT_EQ((style.*member.put)(value), S_OK);
        VARIANT_BOOL done = VARIANT_FALSE;
        m_style->IsModified(&done);
        EXPECT_EQ(done, VARIANT_TRUE);
        const auto node = ConfigNode::create(L"style");
        m_style->AccessConfig2(node->handle(), nullptr, VARIANT_FALSE, VARIANT_FALSE, &done);
        ASSERT_TRUE(node->attribute(member.attribute));
        EXPECT_EQ(*node->attribute(member.attribute), written);
        const auto other = Instance<TextStyle>::make();
        other->AccessConfig2(node->handle(), nullptr, VARIANT_TRUE, VARIANT_FALSE, &done);
        for (IVexTextStyle* each :
             {static_cast<IVexTextStyle*>(m_style.get()), static_cast<IVexTextStyle*>(other.get())}) {
            Value back{};
            EXPECT_EQ((each->*member.get)(&back), S_OK);
            EXPECT_EQ(back, value);
        }
        EXPECT_EQ((style.*member.get)(nullptr), E_POINTER);
    }

    Surface drawn(const std::function<void(RenderDC&)>& draw)
    {
        RenderDC& dc = m_device.renderDC();
        fillRect(dc.canvas(), {0, 0, 200, 60}, kWhite);
        draw(dc);
        Surface copy(m_device.size());
        copyImage({copy.view(), {}, copy.view().bounds()}, {}, m_device.surface()->pixels());
        return copy;
    }

    static bool isSame(const Surface& a, const Surface& b)
    {
        const auto* const pixels = a.view().data;
        return std::equal(pixels, pixels + 200 * 60, b.view().data);
    }

    RenderDevice m_device;
    ComPtr<TextStyle> m_style;
};

TEST_F(TextMembersTest, EachSettingIsKeptUnderItsOwnName)
{
    short number = 2;
    for (const auto& each : kNumbers) {
        SCOPED_TRACE(std::string(each.attribute, each.attribute + wcslen(each.attribute)));
        expectKept(each, number, std::to_wstring(number).c_str());
        number = static_cast<short>(number + 1);
    }
    for (const auto& each : kFlags) {
        SCOPED_TRACE(std::string(each.attribute, each.attribute + wcslen(each.attribute)));
        for (const VARIANT_BOOL value : {VARIANT_FALSE, VARIANT_TRUE})
            expectKept(each, value, value != VARIANT_FALSE ? L"1" : L"0");
    }
    expectKept(kColours[0], OLE_COLOR{0x00123456}, L"0x00123456");
    expectKept(kColours[1], OLE_COLOR{0x80000005}, L"0x80000005"); // a colour of the system
}

TEST_F(TextMembersTest, AStylesFlagsAndFontDrawTheSameOnAContext)
{
    const Bstr text(L"&Flags and fonts of a style that are long");
    for (const bool isSingleLine : {false, true})
        for (const int align : {0, 1, 2})
            for (const int trimming : {0, 3, 4, 5}) {
                m_style->put_bSingleLine(morvane::toVariantBool(isSingleLine));
                m_style->put_nHAlign(static_cast<short>(align));
                m_style->put_nVAlign(static_cast<short>(2 - align));
                m_style->put_nStringTrimming(static_cast<short>(trimming));
                m_style->put_bHotkeyPrefixShow(morvane::toVariantBool(align == 1));
                m_style->put_bRightToLeft(morvane::toVariantBool(align == 2));
                long flags = 0;
                hyper font = 0;
                EXPECT_EQ(m_style->GetDrawFlags(&flags), S_OK);
                EXPECT_EQ(m_style->GetRenderFont(m_device.handle(), &font), S_OK);
                VARIANT_BOOL done = VARIANT_FALSE;
                SkinRect room{20, 5, 170, 50};
                const Surface byStyle = drawn([&](RenderDC& dc) {
                    m_style->RenderDrawText(&dc, text.get(), room, VARIANT_TRUE, -1, nullptr, &done);
                });
                EXPECT_TRUE(isSame(byStyle,
                                   drawn([&](RenderDC& dc) { dc.DrawText(text.get(), &room, font, 0, flags, &done); })))
                    << isSingleLine << align << trimming;
                EXPECT_TRUE(isSame(byStyle, drawn([&](RenderDC& dc) {
                                       m_style->RenderDrawText(&dc, text.get(), room, VARIANT_TRUE, flags, nullptr,
                                                               &done);
                                   })));
            }
}

TEST_F(TextMembersTest, AFontIsOfItsDevicesScaleAndAGivenBackOneIsMadeAgain)
{
    const Bstr text(L"Font");
    SkinRect room{0, 0, 200, 60};
    VARIANT_BOOL done = VARIANT_FALSE;
    const auto widthOfInk = [&](hyper font) {
        const Surface surface = drawn([&](RenderDC& dc) { dc.DrawText(text.get(), &room, font, 0, 0, &done); });
        int right = 0;
        for (int y = 0; y < 60; ++y)
            for (int x = 0; x < 200; ++x)
                if (surface.view().at(x, y) != kWhite)
                    right = std::max(right, x);
        return right;
    };
    hyper font = 0;
    m_style->GetRenderFont(m_device.handle(), &font);
    const int once = widthOfInk(font);
    long left = -1;
    EXPECT_EQ(m_style->ReleaseRenderFont(VEX_RENDERENGINE_GDI, &left), S_OK);
    EXPECT_EQ(left, 0);
    EXPECT_EQ(widthOfInk(font), once) << "who has the number may still draw";
    m_device.setScale(Scale(200));
    m_style->GetRenderFont(m_device.handle(), &font);
    EXPECT_NEAR(widthOfInk(font), 2 * once, 3);
    EXPECT_GT(widthOfInk(0), 0) << "without a font, in the usual one";
}

TEST_F(TextMembersTest, WidthAndHeightOfATextAreItsExtents)
{
    m_style->put_bSingleLine(VARIANT_FALSE);
    const Bstr text(L"two\nlines of text");
    SkinRect extent{};
    VARIANT_BOOL done = VARIANT_FALSE;
    m_style->DrawText(0, text.get(), {0, 0, 1000, 1000}, VARIANT_FALSE, -1, &extent, &done);
    long width = 0;
    long viaSize = 0;
    long height = 0;
    EXPECT_EQ(m_style->CalcTextWidth(0, text.get(), &width), S_OK);
    EXPECT_EQ(m_style->CalcTextSize(0, text.get(), VARIANT_TRUE, &viaSize), S_OK);
    EXPECT_EQ(m_style->CalcTextSize(0, text.get(), VARIANT_FALSE, &height), S_OK);
    EXPECT_EQ(width, extent.right);
    EXPECT_EQ(viaSize, width);
    EXPECT_EQ(height, extent.bottom);
    EXPECT_EQ(m_style->CalcTextWidth(0, nullptr, &width), S_OK);
    EXPECT_EQ(width, 0);
    EXPECT_EQ(m_style->CalcTextSize(0, text.get(), VARIANT_TRUE, nullptr), E_POINTER);
}

TEST_F(TextMembersTest, TheFontIsHeldSharedAndCanBeTakenAway)
{
    auto font = Instance<Font>::make();
    EXPECT_EQ(m_style->put_fontExPtr(font.get()), S_OK);
    ComPtr<IVexFontEx> back;
    EXPECT_EQ(m_style->get_fontExPtr(back.put()), S_OK);
    EXPECT_EQ(back.get(), static_cast<IVexFontEx*>(font.get()));
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(m_style->ReleaseRefrence(&done), S_OK);
    EXPECT_EQ(m_style->get_fontExPtr(back.put()), S_OK);
    EXPECT_FALSE(back);
    EXPECT_EQ(m_style->get_fontExPtr(nullptr), E_POINTER);
}

} // namespace
} // namespace ambrel
