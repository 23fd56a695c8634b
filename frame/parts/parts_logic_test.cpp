#include "frame/parts/auto_size_logic.h"
#include "frame/parts/frame_strip_logic.h"
#include "frame/parts/graphic_layout.h"

#include <gtest/gtest.h>

#include <limits>

using namespace morvane;

namespace {

/// A text of a given unwrapped width whose lines are 12 high.
class FakeText final : public TextMeasure {
public:
    explicit FakeText(int width) : m_width(width) {}

    std::optional<Size> measure(Size within) override
    {
        if (fails)
            return std::nullopt;
        if (within.width >= m_width)
            return Size{m_width, 12};
        return Size{within.width, 12 * ((m_width + within.width - 1) / within.width)};
    }

    bool fails = false;

private:
    int m_width;
};

AutoSizeRequest fixedWidthRequest()
{
    AutoSizeRequest request;
    request.current = {80, 24};
    request.limits = {0, 100, 14, 0};
    request.widthIsFixed = true;
    request.storedHeight = 24;
    request.textLength = 5;
    request.besideText = 10;
    return request;
}

} // namespace

TEST(AutoSizeTest, ATextThatFitsGivesItsWidthWithRoomAndWhatStandsBesideIt)
{
    FakeText text(50);
    EXPECT_EQ(autoSize(fixedWidthRequest(), text), (AutoSizeResult{14, 50 + 4 + 2 + 10}));
}

TEST(AutoSizeTest, ATextWiderThanTheMaximumWraps)
{
    FakeText text(250);
    EXPECT_EQ(autoSize(fixedWidthRequest(), text), (AutoSizeResult{36, 100 + 2 + 10}));
}

TEST(AutoSizeTest, WithoutAWidthOfItsOwnTheTextWrapsAtTheControl)
{
    AutoSizeRequest request = fixedWidthRequest();
    request.widthIsFixed = false;
    request.storesWidth = false;
    FakeText text(150);
    EXPECT_EQ(autoSize(request, text), std::nullopt) << "two lines of 12 are what is stored already";
    request.storedHeight = 10;
    EXPECT_EQ(autoSize(request, text), (AutoSizeResult{24, std::nullopt}));
}

TEST(AutoSizeTest, AnEmptyTextGivesTheMinimumSizeEvenWithoutAStyle)
{
    AutoSizeRequest request = fixedWidthRequest();
    request.textLength = 0;
    request.limits.minWidth = 30;
    FakeText text(50);
    EXPECT_EQ(autoSize(request, text), (AutoSizeResult{14, 30 + 2 + 10}));
    request.hasTextStyle = false;
    EXPECT_EQ(autoSize(request, text), (AutoSizeResult{14, 30 + 2 + 10}));
}

TEST(AutoSizeTest, LimitsHoldTheHeightAndZeroMeansNone)
{
    AutoSizeRequest request = fixedWidthRequest();
    request.limits.maxHeight = 20;
    FakeText text(250);
    EXPECT_EQ(autoSize(request, text)->height, 20);
    request.limits.minHeight = 40;
    request.limits.maxHeight = 0;
    EXPECT_EQ(autoSize(request, text)->height, 40);
}

TEST(AutoSizeTest, LimitsAtTheEndsOfTheNumbersAreTakenAsTheyAre)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    AutoSizeRequest request = fixedWidthRequest();
    request.limits.minWidth = kMost;
    request.current.width = -7;
    FakeText text(50);
    EXPECT_EQ(autoSize(request, text)->width, kMost) << "no room is left for what stands beside it";
    request.limits = {kLeast, kLeast, kMost, kLeast};
    request.textLength = 0;
    request.besideText = kLeast;
    EXPECT_EQ(autoSize(request, text), (AutoSizeResult{kLeast, kLeast}));
}

TEST(AutoSizeTest, AFailedMeasurementChangesNothing)
{
    FakeText text(50);
    text.fails = true;
    EXPECT_EQ(autoSize(fixedWidthRequest(), text), std::nullopt);
}

TEST(AutoSizeTest, ThePositionStaysWhenHeightAndFixedWidthAlreadyFit)
{
    AutoSizeRequest request = fixedWidthRequest();
    request.current.width = 54;
    request.storedHeight = 14;
    FakeText text(50);
    EXPECT_EQ(autoSize(request, text), std::nullopt);
}

TEST(GraphicLayoutTest, BesideTheTextOnlyALeftGraphicMovesVertically)
{
    const Rect control{10, 10, 110, 50};
    EXPECT_EQ(placeGraphic({false, false, 3, 5}, control, {16, 16}), (Rect{13, 27, 29, 43}));
    EXPECT_EQ(placeGraphic({false, true, 3, 5}, control, {16, 16}), (Rect{91, 22, 107, 38}));
    EXPECT_EQ(placeGraphic({true, false, 3, 5}, control, {16, 16}), (Rect{55, 15, 71, 31}));
}

TEST(GraphicLayoutTest, TheTextGivesWayOnlyToAGraphicThatIsThere)
{
    const Rect control{0, 0, 100, 20};
    EXPECT_EQ(textBesideGraphic({false, false, 3, 0}, control, 16), (Rect{19, 0, 100, 20}));
    EXPECT_EQ(textBesideGraphic({false, true, 3, 0}, control, 16), (Rect{0, 0, 81, 20}));
    EXPECT_EQ(textBesideGraphic({false, false, 3, 0}, control, 0), control);
}

TEST(FrameStripTest, StatesPastTheEndShowTheLastFrame)
{
    const FrameStripGeometry strip{{64, 16}, 4, true};
    EXPECT_EQ(frameRect(strip, 1), (Rect{16, 0, 32, 16}));
    EXPECT_EQ(frameRect(strip, 3), (Rect{48, 0, 64, 16}));
    EXPECT_EQ(frameRect(strip, 4), (Rect{48, 0, 64, 16}));
    EXPECT_EQ(frameRect({{16, 64}, 4, false}, 2), (Rect{0, 32, 16, 48}));
}

TEST(FrameStripTest, ANonsensicalCountGivesNoFrame)
{
    EXPECT_TRUE(frameRect({{64, 16}, 0, true}, 2).isEmpty());
    EXPECT_TRUE(frameRect({{64, 16}, -3, false}, 2).isEmpty());
}
