#include "ambrel/objects/position_layout.h"

#include <gtest/gtest.h>

#include <limits>

namespace ambrel {
namespace {

constexpr Rect kParent{100, 50, 300, 150}; // 200 by 100
constexpr Rect kWider{100, 50, 400, 150};  // 300 by 100

Position horizontal(Anchor anchor, Space space, int nearGap, int farGap, int size)
{
    return {{anchor, space, nearGap, farGap, size}, {Anchor::Near, Space::NearAndSize, 0, 0, 10}};
}

struct Case {
    const char* what;
    Position position;
    int left, right;           // in kParent
    int widerLeft, widerRight; // in kWider
};

const Case kCases[] = {
    {"left keeps near and size", horizontal(Anchor::Near, Space::NearAndSize, 10, 99, 40), 110, 150, 110, 150},
    {"right keeps far and size", horizontal(Anchor::Far, Space::NearAndSize, 99, 10, 40), 250, 290, 350, 390},
    {"centre is moved by near", horizontal(Anchor::Centre, Space::NearAndSize, 5, 99, 40), 185, 225, 235, 275},
    {"both edges follow the parent", horizontal(Anchor::Far, Space::BothEdges, 10, 20, 99), 110, 280, 110, 380},
    {"percent from the left", horizontal(Anchor::Near, Space::Percent, 25, 0, 50), 150, 250, 175, 325},
    {"percent from the right", horizontal(Anchor::Far, Space::Percent, 0, 10, 50), 180, 280, 220, 370},
    {"percent in the centre", horizontal(Anchor::Centre, Space::Percent, 0, 0, 50), 150, 250, 175, 325},
    {"a fixed size stays where it fits", horizontal(Anchor::Near, Space::FixedSize, 10, 0, 40), 110, 150, 110, 150},
    {"a fixed size is moved back inside", horizontal(Anchor::Near, Space::FixedSize, 190, 0, 40), 260, 300, 290, 330},
    {"a negative size is none", horizontal(Anchor::Near, Space::NearAndSize, 10, 0, -5), 110, 110, 110, 110},
    {"gaps wider than the parent leave nothing", horizontal(Anchor::Near, Space::BothEdges, 250, 0, 0), 350, 350, 350,
     400},
};

TEST(PositionLayoutTest, EveryAnchorAndSpaceTypePlacesTheObjectAndFollowsTheParent)
{
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(layOut(c.position, kParent), (Rect{c.left, 50, c.right, 60}));
        EXPECT_EQ(layOut(c.position, kWider), (Rect{c.widerLeft, 50, c.widerRight, 60}));
    }
}

TEST(PositionLayoutTest, PercentagesThatAddUpLeaveNoGap)
{
    const Rect parent{0, 0, 100 + 1, 10};
    const Rect left = layOut(horizontal(Anchor::Near, Space::Percent, 0, 0, 33), parent);
    const Rect middle = layOut(horizontal(Anchor::Near, Space::Percent, 33, 0, 34), parent);
    const Rect right = layOut(horizontal(Anchor::Near, Space::Percent, 67, 0, 33), parent);
    EXPECT_EQ(left.right, middle.left);
    EXPECT_EQ(middle.right, right.left);
    EXPECT_EQ(right.right, 101);
}

TEST(PositionLayoutTest, AMirroredParentTurnsNearAndFarRound)
{
    EXPECT_EQ(layOut(horizontal(Anchor::Near, Space::NearAndSize, 10, 0, 40), kParent, true), (Rect{250, 50, 290, 60}));
    EXPECT_EQ(layOut(horizontal(Anchor::Far, Space::NearAndSize, 0, 10, 40), kParent, true), (Rect{110, 50, 150, 60}));
    EXPECT_EQ(layOut(horizontal(Anchor::Near, Space::BothEdges, 10, 20, 0), kParent, true), (Rect{120, 50, 290, 60}));
}

TEST(PositionLayoutTest, APositionMadeForARectangleGivesItBack)
{
    const Rect rect{130, 60, 231, 145};
    for (Anchor anchor : {Anchor::Near, Anchor::Centre, Anchor::Far}) {
        for (Space space : {Space::NearAndSize, Space::BothEdges, Space::FixedSize}) {
            for (bool mirrored : {false, true}) {
                const Position kind{{anchor, space, 0, 0, 0}, {anchor, space, 0, 0, 0}};
                const Position position = positionFor(rect, kParent, kind, mirrored);
                EXPECT_EQ(layOut(position, kParent, mirrored), rect)
                    << static_cast<int>(anchor) << ' ' << static_cast<int>(space) << ' ' << mirrored;
                EXPECT_EQ(position.vertical.space, space);
            }
        }
    }
    const Position percent =
        positionFor({150, 50, 250, 100}, kParent, {{Anchor::Near, Space::Percent}, {Anchor::Far, Space::Percent}});
    EXPECT_EQ(layOut(percent, kParent), (Rect{150, 50, 250, 100}));
}

TEST(PositionLayoutTest, DocksGoToTheirPlaces)
{
    struct Expected {
        Dock dock;
        Rect alone;
        Rect full;
    };
    const Expected cases[] = {
        {Dock::LeftTop, {100, 50, 140, 60}, {100, 50, 140, 60}},
        {Dock::Left, {100, 50, 140, 60}, {100, 50, 140, 150}},
        {Dock::Right, {260, 50, 300, 60}, {260, 50, 300, 150}},
        {Dock::Top, {100, 50, 140, 60}, {100, 50, 300, 60}},
        {Dock::Bottom, {100, 140, 140, 150}, {100, 140, 300, 150}},
        {Dock::LeftBottom, {100, 140, 140, 150}, {100, 140, 140, 150}},
        {Dock::RightBottom, {260, 140, 300, 150}, {260, 140, 300, 150}},
        {Dock::RightTop, {260, 50, 300, 60}, {260, 50, 300, 60}},
        {Dock::Client, kParent, kParent},
        {Dock::CentreTop, {180, 50, 220, 60}, {180, 50, 220, 60}},
        {Dock::CentreBottom, {180, 140, 220, 150}, {180, 140, 220, 150}},
        {Dock::MiddleLeft, {100, 95, 140, 105}, {100, 95, 140, 105}},
        {Dock::MiddleRight, {260, 95, 300, 105}, {260, 95, 300, 105}},
        {Dock::Centre, {180, 95, 220, 105}, {180, 95, 220, 105}},
    };
    static_assert(std::size(cases) == kDockCount);
    for (const Expected& c : cases) {
        EXPECT_EQ(layOut(dockedPosition(c.dock, {40, 10}, false), kParent), c.alone) << static_cast<int>(c.dock);
        EXPECT_EQ(layOut(dockedPosition(c.dock, {40, 10}, true), kParent), c.full) << static_cast<int>(c.dock);
    }
}

TEST(PositionLayoutTest, ExtremeNumbersStayInsideTheCoordinateSpace)
{
    constexpr int kLowest = std::numeric_limits<int>::min();
    constexpr int kHighest = std::numeric_limits<int>::max();
    for (Anchor anchor : {Anchor::Near, Anchor::Centre, Anchor::Far}) {
        for (Space space : {Space::NearAndSize, Space::BothEdges, Space::Percent, Space::FixedSize}) {
            for (int number : {kLowest, kHighest}) {
                const PositionHalf half{anchor, space, number, number, number};
                const Rect rect = layOut({half, half}, {kLowest, kLowest, kHighest, kHighest}, true);
                EXPECT_GE(rect.width(), 0); // and computing it did not overflow
                positionFor({kLowest, 0, kHighest, 1}, {kHighest, 0, kLowest, 1}, {half, half}, true);
            }
        }
    }
}

} // namespace
} // namespace ambrel
