#include "base/axis.h"
#include "base/geometry.h"
#include "base/rounding.h"

#include <gtest/gtest.h>

using namespace morvane;

TEST(RectTest, LeftAndTopBelongToARectangleAndRightAndBottomDoNot)
{
    const Rect r{10, 20, 30, 40};
    EXPECT_TRUE(r.contains(Point{10, 20}));
    EXPECT_TRUE(r.contains(Point{29, 39}));
    EXPECT_FALSE(r.contains(Point{30, 39}));
    EXPECT_FALSE(r.contains(Point{29, 40}));
}

TEST(RectTest, AnEmptyRectangleAddsNothingToAUnionAndMeetsNobody)
{
    const Rect r{10, 20, 30, 40};
    EXPECT_EQ(r.united(Rect{}), r);
    EXPECT_EQ(Rect{}.united(r), r);
    EXPECT_FALSE(r.intersects(Rect{30, 20, 50, 40}));
    EXPECT_EQ(r.intersection(Rect{25, 0, 90, 25}), (Rect{25, 20, 30, 25}));
}

TEST(PackedPointTest, NegativeCoordinatesKeepTheirSignsAndDoNotMixBits)
{
    EXPECT_EQ(packPoint({5, 3}), 0x30005);
    EXPECT_EQ(packPoint({-1, 0}), 0xFFFF);
    EXPECT_EQ(packPoint({0, -1}), -65536);
    EXPECT_EQ(unpackPoint(packPoint({-7, -9})), (Point{-7, -9}));
}

TEST(RoundingTest, ScalingRoundsHalvesAwayFromZeroAndSurvivesAZeroDenominator)
{
    EXPECT_EQ(scaled(1, 3, 2), 2);
    EXPECT_EQ(scaled(-1, 3, 2), -2);
    EXPECT_EQ(scaled(2'000'000'000, 2, 4), 1'000'000'000);
    EXPECT_EQ(scaled(7, 3, 0), 0);
    EXPECT_EQ(narrowed16(0x1FFFF), -1);
    EXPECT_EQ(saturatingAdd(2'147'483'647, 1), 2'147'483'647);
}

TEST(GeometryTest, CoordinatesStayAtTheEndsOfTheNumbers)
{
    constexpr int kMost = 2'147'483'647;
    constexpr int kLeast = -kMost - 1;
    const Rect everything{kLeast, kLeast, kMost, kMost};
    EXPECT_EQ(everything.size(), (Size{kMost, kMost}));
    EXPECT_EQ((Rect{kMost, 0, kLeast, 0}).width(), kLeast);
    EXPECT_EQ(Rect::at({kMost, 5}, {10, 10}), (Rect{kMost, 5, kMost, 15}));
    EXPECT_EQ(everything.shifted(1, -1), (Rect{kLeast + 1, kLeast, kMost, kMost - 1}));
    EXPECT_EQ(everything.inflated(1), everything);
    EXPECT_EQ((Point{kMost, kLeast} + Point{1, -1}), (Point{kMost, kLeast}));
    EXPECT_EQ((Point{kMost, kLeast} - Point{-1, 1}), (Point{kMost, kLeast}));
    EXPECT_FALSE(centredIn(everything, {10, 10}).isEmpty());
}

TEST(AxisTest, SpansBecomeRectanglesInBothDirections)
{
    EXPECT_EQ(rectFromSpans(Axis::Horizontal, 1, 5, 10, 20), (Rect{1, 10, 5, 20}));
    EXPECT_EQ(rectFromSpans(Axis::Vertical, 1, 5, 10, 20), (Rect{10, 1, 20, 5}));
    EXPECT_EQ(extent(Axis::Vertical, Rect{0, 2, 9, 12}), 10);
}
