// Drawing what was drawn before allocates nothing.
#include "ambrel/render/counted_allocations.h"
#include "ambrel/render/fill_color.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/test_support.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using namespace test;
using morvane::ComPtr;
using morvane::Instance;

class DrawingCostTest : public testing::Test {
protected:
    DrawingCostTest() { m_device.resize({200, 100}); }
    ~DrawingCostTest() override { setCurrentScale(Scale()); }

    template <class Draw>
    long allocationsOfTheSecond(Draw&& draw)
    {
        draw();
        const long before = allocationCount();
        draw();
        return allocationCount() - before;
    }

    RenderDevice m_device;
    VARIANT_BOOL m_drawn = VARIANT_FALSE;
};

TEST_F(DrawingCostTest, SectionsFillsLinesAndImagesAllocateNothing)
{
    auto picture = Instance<Picture>::make();
    picture->loadFromMemory(encodePng(surfaceOf({12, 12}, packPixel(128, 64, 0, 0)).view()));
    auto image = Instance<ImageBase>::make();
    image->setPicture(picture.get());
    image->put_rcBorder({4, 4, 4, 4});
    const auto fill = Instance<FillColor>::make();
    fill->setColours(kRedColour, 0x00FF0000, 90);
    const auto drawScene = [&] {
        RenderDC& dc = m_device.renderDC();
        SkinRect all{0, 0, 200, 100};
        dc.FillSolidColor(&all, 0x00FFFFFF, &m_drawn);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(image->RenderDraw(&dc, {i * 30, 0, i * 30 + 25 + i, 30}, 0, &m_drawn), S_OK);
            EXPECT_EQ(m_drawn, VARIANT_TRUE);
        }
        fill->RenderDraw(&dc, {0, 40, 100, 60}, &m_drawn);
        dc.DrawLine(0, 90, 150, 95, 1, 255, 0, &m_drawn);
        dc.finishDrawing();
    };
    EXPECT_EQ(allocationsOfTheSecond(drawScene), 0);
}

class TextCostTest : public DrawingCostTest {
protected:
    TextCostTest() : m_style(Instance<TextStyle>::make()) { m_style->QueryInterface(kIidDrawsText, m_face.putVoid()); }

    /// How often a second drawing of the text asks for memory.
    long cost(std::wstring_view text, const SkinRect& rect = {0, 0, 200, 40})
    {
        return allocationsOfTheSecond(
            [&] { EXPECT_EQ(m_face->renderText(m_device.renderDC(), rect, text, m_drawn), S_OK); });
    }

    ComPtr<TextStyle> m_style;
    ComPtr<DrawsText> m_face;
};

TEST_F(TextCostTest, TextsAllocateNothing)
{
    const std::wstring wide(200, L'x'); // a copy of it would be seen
    EXPECT_EQ(cost(L"Button"), 0);
    EXPECT_EQ(cost(wide), 0) << "cut with an ellipsis";
    m_style->put_bHotkeyPrefixShow(VARIANT_TRUE);
    EXPECT_EQ(cost(L"&Save this document"), 0);
    m_style->put_bSingleLine(VARIANT_FALSE);
    EXPECT_EQ(cost(L"some words that need more than the one line there is"), 0);
    m_style->put_nEffect(static_cast<short>(TextEffect::Outline));
    EXPECT_EQ(cost(wide), 0);
    EXPECT_EQ(cost(L"\x05E9\x05DC\x05D5\x05DD"), 0) << "drawn by the system";
    m_style->put_bVertDraw(VARIANT_TRUE);
    EXPECT_EQ(cost(L"Downwards", {0, 0, 30, 100}), 0);
}

TEST_F(TextCostTest, MeasuringIsDoneByWhatDrawingKept)
{
    const morvane::Bstr text(L"A caption to which a control fits itself");
    const auto measure = [&] {
        SkinRect extent{};
        m_style->DrawText(0, text.get(), {0, 0, 1000, 1000}, VARIANT_FALSE, -1, &extent, &m_drawn);
        EXPECT_GT(extent.right, 100);
        long width = 0;
        m_style->CalcTextWidth(0, text.get(), &width);
        EXPECT_EQ(width, extent.right);
    };
    cost(text.view());
    const long before = allocationCount();
    measure();
    EXPECT_EQ(allocationCount(), before);
}

} // namespace
} // namespace ambrel
