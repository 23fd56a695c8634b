// Colours that change on their way to the screen: filters of a skin, keys, colourising, opacity.
#include "ambrel/render/colour_filters.h"
#include "ambrel/render/dib_surface.h"
#include "ambrel/render/fill_color.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/test_support.h"
#include "frame/com/instance.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using namespace test;
using morvane::ComPtr;
using morvane::Instance;

constexpr Pixel kGrey = packPixel(255, 128, 128, 128);

/// Stands for a resource object; only its address counts.
class RecolouringTest : public testing::Test {
protected:
    ~RecolouringTest() override
    {
        removeColourFilters(*skin());
        removeColourFilters(*otherSkin());
    }

    IVexRes* skin() { return reinterpret_cast<IVexRes*>(&m_places[0]); }
    IVexRes* otherSkin() { return reinterpret_cast<IVexRes*>(&m_places[1]); }

    ComPtr<ImageBase> imageOf(Pixel colour, IVexRes* resources)
    {
        auto picture = Instance<Picture>::make();
        picture->loadFromMemory(encodePng(surfaceOf({4, 4}, colour).view()));
        auto image = Instance<ImageBase>::make();
        image->identity().resources = resources;
        image->setPicture(picture.get());
        return ComPtr<ImageBase>(image.get());
    }

    Pixel drawn(ImageBase& image)
    {
        fillRect(m_canvas, m_canvas.clip, kWhite);
        image.draw(m_canvas, {0, 0, 8, 8}, 0, {});
        return m_target.view().at(4, 4);
    }

    Pixel drawn(FillColor& fill)
    {
        fillRect(m_canvas, m_canvas.clip, kWhite);
        fill.draw(m_canvas, {0, 0, 8, 8});
        return m_target.view().at(4, 4);
    }

    void* m_places[2] = {};
    Surface m_target{{8, 8}};
    Canvas m_canvas{m_target.view(), {}, m_target.view().bounds()};
};

TEST_F(RecolouringTest, AFilterChangesTheSectionsOfItsSkinAtOnceAndUntilItGoes)
{
    const auto mine = imageOf(kGrey, skin());
    const auto other = imageOf(kGrey, otherSkin());
    const auto content = imageOf(kGrey, nullptr);
    EXPECT_EQ(drawn(*mine.get()), kGrey);
    addColourFilter(*skin(), ChannelShift{100, 0, -200});
    EXPECT_EQ(drawn(*mine.get()), packPixel(255, 228, 128, 0));
    EXPECT_EQ(drawn(*other.get()), kGrey);
    EXPECT_EQ(drawn(*content.get()), kGrey) << "pictures of an application";
    addColourFilter(*otherSkin(), ChannelShift{1, 1, 1});
    EXPECT_TRUE(removeColourFilters(*skin()));
    EXPECT_FALSE(removeColourFilters(*skin()));
    EXPECT_EQ(drawn(*mine.get()), kGrey);
    EXPECT_EQ(drawn(*other.get()), packPixel(255, 129, 129, 129));
}

TEST_F(RecolouringTest, FiltersFollowEachOtherInTheOrderOfAdding)
{
    const auto image = imageOf(kGrey, skin());
    addColourFilter(*skin(), ChannelShift{0, 0, 127});
    addColourFilter(*skin(), Colourise{0, 0, 255}); // takes the colour away
    const Pixel grey = drawn(*image.get());
    EXPECT_EQ(redOf(grey), blueOf(grey));
    removeColourFilters(*skin());
    addColourFilter(*skin(), Colourise{0, 0, 255});
    addColourFilter(*skin(), ChannelShift{0, 0, 127});
    EXPECT_EQ(drawn(*image.get()), packPixel(255, 128, 128, 255));
}

TEST_F(RecolouringTest, ColourisingMovesTowardsAHueByItsBlend)
{
    const auto image = imageOf(packPixel(255, 200, 100, 100), skin());
    addColourFilter(*skin(), Colourise{120, 255, 0});
    EXPECT_EQ(drawn(*image.get()), packPixel(255, 200, 100, 100)) << "blend 0 leaves it";
    removeColourFilters(*skin());
    addColourFilter(*skin(), Colourise{120, 255, 255});
    const Pixel green = drawn(*image.get());
    EXPECT_GT(greenOf(green), redOf(green) + 100);
    EXPECT_EQ(redOf(green), blueOf(green));
}

TEST_F(RecolouringTest, FillsAndTranslucentPixelsAreRecolouredAndKeepTheirAlpha)
{
    const auto fill = Instance<FillColor>::make();
    fill->setColours(0x00808080, 0x00808080, 0);
    fill->identity().resources = skin();
    addColourFilter(*skin(), ChannelShift{0, 127, 0});
    EXPECT_EQ(drawn(*fill.get()), packPixel(255, 128, 255, 128));

    Surface pixels = surfaceOf({2, 1}, packPixel(128, 64, 64, 64));
    applyShift(pixels.view(), {255, -255, 0});
    EXPECT_EQ(pixels.view().at(0, 0), packPixel(128, 128, 0, 64)) << "no colour beyond its alpha";
    Surface blank({1, 1});
    applyShift(blank.view(), {255, 255, 255});
    EXPECT_EQ(blank.view().at(0, 0), 0u);
}

TEST_F(RecolouringTest, ABitmapOfASectionIsRecolouredToo)
{
    const auto image = imageOf(kGrey, skin());
    addColourFilter(*skin(), ChannelShift{-128, 0, 0});
    hyper handle = 0;
    ASSERT_EQ(image->GetHBitmap({0, 0, 6, 5}, 0xFFFFFFFF, &handle), S_OK);
    const morvane::UniqueBitmap bitmap(reinterpret_cast<HBITMAP>(handle));
    DIBSECTION section{};
    ASSERT_EQ(GetObjectW(bitmap.get(), sizeof section, &section), static_cast<int>(sizeof section));
    EXPECT_EQ(section.dsBm.bmWidth, 6);
    EXPECT_EQ(section.dsBm.bmHeight, 5);
    EXPECT_EQ(static_cast<const Pixel*>(section.dsBm.bmBits)[0], packPixel(255, 0, 128, 128));
    EXPECT_EQ(image->GetHBitmap({}, 0xFFFFFFFF, &handle), S_FALSE);
    EXPECT_EQ(handle, 0);
}

TEST(FillColorTest, AGradientRunsFromStartToEndTurnedByItsRotation)
{
    const auto fill = Instance<FillColor>::make();
    fill->setColours(0x000000FF, 0x00FF0000, 0); // red to blue
    Surface target({64, 64});
    const Canvas canvas{target.view(), {}, target.view().bounds()};
    const auto isRed = [&](int x, int y) { return redOf(target.view().at(x, y)) > 200; };
    const auto isBlue = [&](int x, int y) { return blueOf(target.view().at(x, y)) > 200; };
    struct Case {
        long rotation;
        Point red;
        Point blue;
    };
    for (const Case& c : {Case{0, {1, 32}, {62, 32}}, Case{90, {32, 1}, {32, 62}}, Case{180, {62, 32}, {1, 32}},
                          Case{450, {32, 1}, {32, 62}}, Case{-90, {32, 62}, {32, 1}}, Case{45, {1, 1}, {62, 62}}}) {
        fill->put_nGradientIrotation(c.rotation);
        fill->draw(canvas, {0, 0, 64, 64});
        EXPECT_TRUE(isRed(c.red.x, c.red.y)) << c.rotation;
        EXPECT_TRUE(isBlue(c.blue.x, c.blue.y)) << c.rotation;
    }
}

TEST(FillColorTest, AColourThatIsNoneIsNotDrawn)
{
    constexpr OLE_COLOR kNone = 0xFFFFFFFF;
    const auto fill = Instance<FillColor>::make();
    Surface target({8, 8});
    const Canvas canvas{target.view(), {}, target.view().bounds()};
    fill->setColours(kNone, kNone, 0);
    EXPECT_FALSE(fill->draw(canvas, {0, 0, 8, 8}));
    EXPECT_EQ(target.view().at(4, 4), 0u);
    for (const bool startIsGiven : {false, true}) {
        fill->setColours(startIsGiven ? 0x000000FF : kNone, startIsGiven ? kNone : 0x000000FF, 90);
        EXPECT_TRUE(fill->draw(canvas, {0, 0, 8, 8}));
        EXPECT_EQ(target.view().at(4, 0), kRed);
        EXPECT_EQ(target.view().at(4, 7), kRed);
    }
}

TEST(FillColorTest, BitmapAndDeviceContextShowTheSameAsTheRenderPath)
{
    const auto fill = Instance<FillColor>::make();
    fill->setColours(0x00112233, 0x00112233, 0);
    hyper handle = 0;
    ASSERT_EQ(fill->GetBitmap({5, 5, 9, 8}, &handle), S_OK);
    const morvane::UniqueBitmap bitmap(reinterpret_cast<HBITMAP>(handle));
    BITMAP description{};
    GetObjectW(bitmap.get(), sizeof description, &description);
    EXPECT_EQ(description.bmWidth, 4);
    EXPECT_EQ(description.bmHeight, 3);
    EXPECT_EQ(static_cast<const Pixel*>(description.bmBits)[0], 0xFF332211u);
    EXPECT_EQ(fill->GetBitmap({}, &handle), S_FALSE);

    const DibSurface surface({10, 10});
    VARIANT_BOOL drawn = VARIANT_FALSE;
    EXPECT_EQ(fill->Draw(reinterpret_cast<hyper>(surface.dc()), {2, 2, 6, 6}, &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_TRUE);
    EXPECT_EQ(surface.pixels().at(2, 2), 0xFF332211u);
    EXPECT_EQ(surface.pixels().at(6, 6), 0u);
    EXPECT_EQ(fill->Draw(0, {2, 2, 6, 6}, &drawn), S_OK);
    EXPECT_EQ(drawn, VARIANT_FALSE);
    EXPECT_EQ(fill->RenderDraw(nullptr, {2, 2, 6, 6}, &drawn), E_POINTER);
}

} // namespace
} // namespace ambrel
