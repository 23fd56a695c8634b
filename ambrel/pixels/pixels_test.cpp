#include "ambrel/pixels/colour_change.h"
#include "ambrel/pixels/draw.h"
#include "ambrel/pixels/gradient.h"
#include "ambrel/pixels/loops.h"
#include "ambrel/pixels/nine_part.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace ambrel {
namespace {

constexpr Pixel kRed = packPixel(255, 255, 0, 0);
constexpr Pixel kGreen = packPixel(255, 0, 255, 0);
constexpr Pixel kBlue = packPixel(255, 0, 0, 255);

/// The same numbers in every run.
class Dice {
public:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_engine); }

    /// Opaque, blank and translucent pixels, as real pictures mix them.
    Pixel pixel()
    {
        switch (upTo(3)) {
        case 0:
            return 0;
        case 1:
            return packPixel(255, upTo(255), upTo(255), upTo(255));
        default: {
            const int alpha = upTo(255);
            return packPixel(alpha, upTo(alpha), upTo(alpha), upTo(alpha));
        }
        }
    }

    Surface surface(Size size)
    {
        Surface result(size);
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x)
                result.view().row(y)[x] = pixel();
        return result;
    }

private:
    std::mt19937 m_engine{20240501};
};

Canvas wholeOf(Surface& surface)
{
    return {surface.view(), {}, surface.view().bounds()};
}

std::vector<Pixel> pixelsOf(const Surface& surface)
{
    std::vector<Pixel> all;
    for (int y = 0; y < surface.size().height; ++y)
        all.insert(all.end(), surface.view().row(y), surface.view().row(y) + surface.size().width);
    return all;
}

/// What a drawing leaves on the same background with the plain and with the fast loops.
void expectSameWithBothLoops(const Surface& background, const std::function<void(Surface&)>& drawing)
{
    Surface plain = background;
    Surface fast = background;
    {
        const LoopsChoice choice(plainLoops());
        drawing(plain);
    }
    {
        const LoopsChoice choice(fastLoops());
        drawing(fast);
    }
    EXPECT_EQ(pixelsOf(plain), pixelsOf(fast));
}

TEST(PixelLoopsTest, FastAndPlainLoopsGiveTheSameBits)
{
    Dice dice;
    for (int round = 0; round < 200; ++round) {
        const Size size{1 + dice.upTo(40), 1 + dice.upTo(6)};
        const Surface background = dice.surface(size);
        const Surface source = dice.surface({1 + dice.upTo(40), 1 + dice.upTo(6)});
        const Point at{dice.upTo(20) - 10, dice.upTo(6) - 3};
        const int opacity = dice.upTo(255);
        const Pixel colour = dice.pixel();
        std::vector<std::uint8_t> mask(17 * 3);
        for (std::uint8_t& m : mask)
            m = static_cast<std::uint8_t>(dice.upTo(2) == 0 ? 0 : dice.upTo(255));
        expectSameWithBothLoops(background, [&](Surface& s) { blendImage(wholeOf(s), at, source.view()); });
        expectSameWithBothLoops(background, [&](Surface& s) { blendImage(wholeOf(s), at, source.view(), opacity); });
        expectSameWithBothLoops(background, [&](Surface& s) { blendRect(wholeOf(s), {at.x, at.y, 30, 4}, colour); });
        expectSameWithBothLoops(background, [&](Surface& s) { blendMask(wholeOf(s), at, {17, 3}, mask, 17, colour); });
        expectSameWithBothLoops(background, [&](Surface& s) { stretchImage(s.view(), source.view()); });
    }
}

TEST(PixelLoopsTest, ColoursBeyondTheirAlphaAreHeldAtWhite)
{
    Surface background({8, 1});
    fillRect(wholeOf(background), {0, 0, 8, 1}, packPixel(255, 200, 200, 200));
    Surface wrong({8, 1});
    fillRect(wholeOf(wrong), {0, 0, 8, 1}, packPixel(10, 255, 255, 255));
    for (const RowLoops* run : {&plainLoops(), &fastLoops()}) {
        const LoopsChoice choice(*run);
        Surface target = background;
        blendImage(wholeOf(target), {0, 0}, wrong.view());
        EXPECT_EQ(target.view().at(0, 0), packPixel(255, 255, 255, 255));
    }
}

TEST(DrawTest, NothingOutsideTheClipIsTouched)
{
    Dice dice;
    const Surface source = dice.surface({30, 30});
    const std::vector<std::uint8_t> mask(30 * 30, 200);
    for (int round = 0; round < 300; ++round) {
        Surface target({24, 20});
        const Rect clip{dice.upTo(24) - 2, dice.upTo(20) - 2, dice.upTo(30), dice.upTo(26)};
        const Canvas canvas{target.view(), {3, 2}, clip};
        const Rect rect{dice.upTo(40) - 10, dice.upTo(40) - 10, dice.upTo(60), dice.upTo(60)};
        fillRect(canvas, rect, kRed);
        blendImage(canvas, rect.topLeft(), source.view());
        tileImage(canvas, rect, source.view().part({0, 0, 1 + dice.upTo(6), 1 + dice.upTo(6)}));
        fillGradient(canvas, rect, kRed, kBlue, dice.upTo(720) - 360);
        drawLine(canvas, rect.topLeft(), {rect.right, rect.bottom}, 1 + dice.upTo(5), kGreen);
        drawRing(canvas, rect, dice.upTo(12), 1 + dice.upTo(4), kGreen);
        blendMask(canvas, rect.topLeft(), {30, 30}, mask, 30, kBlue);
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 24; ++x)
                if (!clip.contains(Point{x + 3, y + 2}))
                    ASSERT_EQ(target.view().at(x, y), 0u) << "round " << round << " at " << x << ", " << y;
    }
}

TEST(DrawTest, ARingHasItsWidthAndLeavesTheInsideAlone)
{
    Surface target({20, 12});
    drawRing(wholeOf(target), {0, 0, 20, 12}, 4, 2, kRed);
    for (const Point p :
         {Point{10, 0}, Point{10, 1}, Point{0, 6}, Point{1, 6}, Point{19, 6}, Point{18, 6}, Point{10, 11}})
        EXPECT_EQ(target.view().at(p.x, p.y), kRed) << p.x << ", " << p.y;
    for (const Point p : {Point{0, 0}, Point{10, 2}, Point{2, 6}, Point{17, 6}, Point{10, 9}, Point{19, 11}})
        EXPECT_EQ(target.view().at(p.x, p.y), 0u) << p.x << ", " << p.y;
    EXPECT_GT(alphaOf(target.view().at(1, 1)), 0); // the corner runs through here
}

TEST(GradientTest, RunsFromTheFirstColourToTheLastInItsDirection)
{
    const struct {
        int angle;
        Point first;
        Point last;
    } kCases[] = {{0, {0, 3}, {15, 3}},  {90, {5, 0}, {5, 7}},  {180, {15, 3}, {0, 3}}, {270, {5, 7}, {5, 0}},
                  {-90, {5, 7}, {5, 0}}, {450, {5, 0}, {5, 7}}, {45, {0, 0}, {15, 7}},  {135, {15, 0}, {0, 7}}};
    for (const auto& c : kCases) {
        Surface target({16, 8});
        fillGradient(wholeOf(target), {0, 0, 16, 8}, kRed, kBlue, c.angle);
        const Pixel first = target.view().at(c.first.x, c.first.y);
        const Pixel last = target.view().at(c.last.x, c.last.y);
        EXPECT_GT(redOf(first), 220) << c.angle;
        EXPECT_LT(redOf(last), 35) << c.angle;
        EXPECT_GT(blueOf(last), 220) << c.angle;
    }
}

TEST(GradientTest, AVisiblePartShowsTheSameAsTheWhole)
{
    for (const int angle : {0, 30, 90, 200}) {
        Surface whole({400, 9});
        Surface part({400, 9});
        fillGradient(wholeOf(whole), {-20, -3, 420, 30}, kRed, kGreen, angle);
        fillGradient(wholeOf(part).clippedTo({100, 2, 390, 7}), {-20, -3, 420, 30}, kRed, kGreen, angle);
        for (int y = 2; y < 7; ++y)
            for (int x = 100; x < 390; ++x)
                ASSERT_EQ(part.view().at(x, y), whole.view().at(x, y));
    }
}

TEST(StretchTest, OneColourStaysThatColourAtEverySize)
{
    Dice dice;
    const Pixel colour = packPixel(200, 150, 7, 200);
    for (int round = 0; round < 60; ++round) {
        Surface source({1 + dice.upTo(20), 1 + dice.upTo(20)});
        fillRect(wholeOf(source), source.view().bounds(), colour);
        Surface target({1 + dice.upTo(50), 1 + dice.upTo(50)});
        stretchImage(target.view(), source.view(), round % 2 == 0 ? StretchQuality::Smooth : StretchQuality::Nearest);
        for (const Pixel p : pixelsOf(target))
            ASSERT_EQ(p, colour);
    }
}

TEST(StretchTest, ShrinkingTakesTheMeanAndGrowingBlends)
{
    Surface stripes({8, 1});
    for (int x = 0; x < 8; x += 2)
        stripes.view().row(0)[x] = packPixel(255, 255, 255, 255);
    Surface half({4, 1});
    stretchImage(half.view(), stripes.view());
    for (int x = 0; x < 4; ++x)
        EXPECT_NEAR(alphaOf(half.view().at(x, 0)), 128, 32);

    const Pixel two[] = {kRed, kBlue};
    Surface grown({8, 1});
    stretchImage(grown.view(), {two, 2, 1, 2});
    EXPECT_EQ(grown.view().at(0, 0), kRed);
    EXPECT_EQ(grown.view().at(7, 0), kBlue);
    for (int x = 1; x < 8; ++x)
        EXPECT_LE(redOf(grown.view().at(x, 0)), redOf(grown.view().at(x - 1, 0)));
}

TEST(StretchTest, ColourNeverExceedsAlpha)
{
    Dice dice;
    for (int round = 0; round < 60; ++round) {
        const Surface source = dice.surface({1 + dice.upTo(15), 1 + dice.upTo(15)});
        Surface target({1 + dice.upTo(30), 1 + dice.upTo(30)});
        stretchImage(target.view(), source.view());
        for (const Pixel p : pixelsOf(target))
            ASSERT_TRUE(redOf(p) <= alphaOf(p) && greenOf(p) <= alphaOf(p) && blueOf(p) <= alphaOf(p));
    }
}

/// 5 x 5: a red frame of one pixel, a green middle with a blue dot.
Surface framedPicture()
{
    Surface picture({5, 5});
    fillRect(wholeOf(picture), {0, 0, 5, 5}, kRed);
    fillRect(wholeOf(picture), {1, 1, 4, 4}, kGreen);
    picture.view().row(2)[2] = kBlue;
    return picture;
}

TEST(NinePartTest, ThePartsOfATargetAreThoseOfTheWholeOne)
{
    Surface picture({9, 8});
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 9; ++x)
            picture.view().row(y)[x] = packPixel(255, x * 28, y * 31, (x * y * 7) & 0xFF);
    for (const bool isStretched : {true, false}) {
        NineParts parts{{2, 1, 3, 2}, {2, 2, 5, 3}, {}, 3, 2};
        parts.stretch = {isStretched, !isStretched, isStretched, isStretched, isStretched};
        Surface whole({61, 47});
        drawNineParts(whole.view(), picture.view(), parts);
        for (const Rect& window :
             {Rect{0, 0, 61, 47}, Rect{1, 1, 3, 3}, Rect{5, 7, 40, 30}, Rect{50, 40, 61, 47}, Rect{10, 46, 11, 47}}) {
            Surface part(window.size());
            drawNinePartsPart(part.view(), picture.view(), parts, whole.size(), window.topLeft());
            for (int y = 0; y < part.size().height; ++y)
                for (int x = 0; x < part.size().width; ++x)
                    ASSERT_EQ(part.view().at(x, y), whole.view().at(window.left + x, window.top + y))
                        << isStretched << ' ' << window.left << ' ' << x << ' ' << y;
        }
    }
}

TEST(NinePartTest, BordersKeepTheirWidthAndTheMiddleFills)
{
    const Surface picture = framedPicture();
    Surface target({40, 30});
    drawNineParts(target.view(), picture.view(), {{1, 1, 1, 1}, {1, 1, 1, 1}, {}});
    for (const Point p : {Point{0, 0}, Point{20, 0}, Point{39, 29}, Point{0, 15}, Point{39, 10}})
        EXPECT_EQ(target.view().at(p.x, p.y), kRed);
    EXPECT_EQ(target.view().at(1, 1), kGreen);
    EXPECT_EQ(target.view().at(38, 28), kGreen);
}

TEST(NinePartTest, ATiledMiddleRepeats)
{
    const Surface picture = framedPicture();
    Surface target({11, 8});
    NineParts parts{{1, 1, 1, 1}, {1, 1, 1, 1}, {}};
    parts.stretch.client = false;
    drawNineParts(target.view(), picture.view(), parts);
    for (const Point dot : {Point{2, 2}, Point{5, 2}, Point{8, 2}, Point{2, 5}, Point{8, 5}})
        EXPECT_EQ(target.view().at(dot.x, dot.y), kBlue);
    EXPECT_EQ(target.view().at(3, 2), kGreen);
}

TEST(NinePartTest, LargerTargetBordersScaleTheCornersAndTiles)
{
    const Surface picture = framedPicture();
    Surface target({22, 16});
    NineParts parts{{1, 1, 1, 1}, {2, 2, 2, 2}, {}, 2, 1};
    parts.stretch.client = false;
    drawNineParts(target.view(), picture.view(), parts);
    EXPECT_EQ(target.view().at(1, 1), kRed);
    EXPECT_EQ(target.view().at(2, 2), kGreen);
    EXPECT_EQ(target.view().at(5, 5), target.view().at(11, 5)); // the tile is six wide now
}

TEST(NinePartTest, EverySizeIsFilledAndNoneReadsOutside)
{
    Dice dice;
    for (int round = 0; round < 400; ++round) {
        Surface source = dice.surface({dice.upTo(9), dice.upTo(9)});
        for (int y = 0; y < source.size().height; ++y)
            for (int x = 0; x < source.size().width; ++x)
                source.view().row(y)[x] |= 0xFF000000u;
        Surface target({dice.upTo(12), dice.upTo(12)});
        const auto border = [&] { return dice.upTo(12) - 2; };
        const auto flag = [&] { return dice.upTo(1) != 0; };
        drawNineParts(target.view(), source.view(),
                      {{border(), border(), border(), border()},
                       {border(), border(), border(), border()},
                       {flag(), flag(), flag(), flag(), flag()},
                       1 + dice.upTo(3),
                       1 + dice.upTo(2)});
        if (source.isEmpty())
            continue;
        for (const Pixel p : pixelsOf(target))
            ASSERT_EQ(alphaOf(p), 255) << "round " << round;
    }
}

TEST(NinePartTest, BordersThatDoNotFitShareTheLength)
{
    const ThreeLengths fits = splitLength(10, 3, 4);
    EXPECT_EQ(fits.middle, 3);
    const ThreeLengths tight = splitLength(6, 4, 8);
    EXPECT_EQ(tight.first, 2);
    EXPECT_EQ(tight.middle, 0);
    EXPECT_EQ(tight.last, 4);
    EXPECT_EQ(splitLength(-5, 4, 8).last, 0);
}

TEST(ColourChangeTest, TheKeyColourBecomesTransparentAndNothingElse)
{
    Pixel pixels[] = {packPixel(255, 255, 0, 255), packPixel(255, 255, 0, 254), packPixel(128, 128, 0, 128)};
    applyColourKey({pixels, 3, 1, 3}, 0x00FF00FF);
    EXPECT_EQ(pixels[0], 0u);
    EXPECT_EQ(pixels[1], packPixel(255, 255, 0, 254));
    EXPECT_EQ(pixels[2], packPixel(128, 128, 0, 128));
}

TEST(ColourChangeTest, ColourisingTakesTheHueAndKeepsLightnessAndAlpha)
{
    Pixel pixels[] = {packPixel(255, 128, 128, 128), packPixel(128, 64, 32, 32), packPixel(255, 255, 255, 255),
                      packPixel(255, 0, 0, 0), 0};
    applyColourise({pixels, 5, 1, 5}, Colourise::of(0x00FF0000)); // pure blue
    EXPECT_GT(blueOf(pixels[0]), redOf(pixels[0]) + 200);
    EXPECT_EQ(alphaOf(pixels[1]), 128);
    EXPECT_LE(blueOf(pixels[1]), 128);
    EXPECT_EQ(pixels[2], packPixel(255, 255, 255, 255));
    EXPECT_EQ(pixels[3], packPixel(255, 0, 0, 0));
    EXPECT_EQ(pixels[4], 0u);

    Pixel untouched[] = {kRed};
    applyColourise({untouched, 1, 1, 1}, {120, 255, 0});
    EXPECT_EQ(untouched[0], kRed);
}

TEST(SurfaceTest, SidesBeyondTheLimitGiveAnEmptySurface)
{
    EXPECT_TRUE(Surface({Surface::kMaxSide + 1, 1}).isEmpty());
    EXPECT_TRUE(Surface({Surface::kMaxSide, Surface::kMaxSide}).isEmpty());
    EXPECT_TRUE(Surface({-1, 5}).isEmpty());
    EXPECT_FALSE(Surface({Surface::kMaxSide, 1}).isEmpty());
}

TEST(SurfaceTest, CoverageTellsBlankOpaqueAndMixed)
{
    Surface s({3, 2});
    EXPECT_EQ(coverageOf(s.view()), Coverage::Blank);
    fillRect(wholeOf(s), {0, 0, 3, 2}, kRed);
    EXPECT_EQ(coverageOf(s.view()), Coverage::Opaque);
    s.view().row(1)[2] = 0;
    EXPECT_EQ(coverageOf(s.view()), Coverage::Mixed);
}

} // namespace
} // namespace ambrel
