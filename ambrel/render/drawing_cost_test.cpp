// Drawing what was drawn before allocates nothing, except for texts, which are laid out anew.
#include "ambrel/render/fill_color.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/render_dc.h"
#include "ambrel/render/render_device.h"
#include "ambrel/render/test_support.h"
#include "ambrel/render/text_style.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

long g_allocations = 0; // of this program, while it runs one thread

} // namespace

void* operator new(std::size_t size)
{
    ++g_allocations;
    if (void* memory = std::malloc(size != 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

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
        const long before = g_allocations;
        draw();
        return g_allocations - before;
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

TEST_F(DrawingCostTest, ATextAllocatesForItsLinesOnly)
{
    const auto style = Instance<TextStyle>::make();
    const std::wstring text(200, L'x'); // a copy of it would be seen
    const SkinRect rect{0, 0, 200, 20};
    const auto drawText = [&] {
        ComPtr<DrawsText> face;
        style->QueryInterface(kIidDrawsText, face.putVoid());
        ASSERT_TRUE(face);
        EXPECT_EQ(face->renderText(m_device.renderDC(), rect, text, m_drawn), S_OK);
    };
    const long few = allocationsOfTheSecond(drawText);
    EXPECT_LE(few, 12) << "the layout's lines";
    style->put_nEffect(static_cast<short>(TextEffect::None));
    EXPECT_EQ(allocationsOfTheSecond(drawText), few) << "the same each time";
}

} // namespace
} // namespace ambrel
