#include "ambrel/window/desktop_place.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

// Three monitors: the primary one with a bar at its bottom, one to its left that lies higher, one above it with a bar
// at its left edge.
constexpr Rect kPrimary{0, 0, 1920, 1040};
constexpr Rect kLeft{-1280, -200, 0, 824};
constexpr Rect kAbove{60, -1080, 1920, 0};
constexpr TipGaps kGaps{20, 4};
constexpr Size kTip{200, 50};

TEST(DesktopPlaceTest, ATipStaysOnThePointersMonitorWhereverThatLies)
{
    EXPECT_EQ(placeOfTip(kTip, {100, 100}, kGaps, kPrimary), (Rect{100, 120, 300, 170}));
    EXPECT_EQ(placeOfTip(kTip, {-1000, -100}, kGaps, kLeft), (Rect{-1000, -80, -800, -30}));
    // At the common edge it does not hang over into the neighbour.
    EXPECT_EQ(placeOfTip(kTip, {-10, 100}, kGaps, kLeft), (Rect{-200, 120, 0, 170}));
    EXPECT_EQ(placeOfTip(kTip, {10, -500}, kGaps, kAbove), (Rect{60, -480, 260, -430})); // the pointer is on the bar
    // Without room below it lies above the pointer, on the same monitor.
    EXPECT_EQ(placeOfTip(kTip, {300, -5}, kGaps, kAbove), (Rect{300, -59, 500, -9}));
    EXPECT_EQ(placeOfTip(kTip, {-700, 800}, kGaps, kLeft), (Rect{-700, 746, -500, 796}));
}

TEST(DesktopPlaceTest, ATipThatIsLargerThanTheMonitorIsCutToIt)
{
    EXPECT_EQ(placeOfTip({3000, 3000}, {-700, 0}, kGaps, kLeft), kLeft);
    EXPECT_EQ(placeOfTip({3000, 50}, {-700, 823}, kGaps, kLeft), (Rect{-1280, 769, 0, 819}));
}

TEST(DesktopPlaceTest, ACentredWindowStaysInReach)
{
    const Rect owner{-1400, -300, -1000, 0}; // half outside of its monitor, to the left and above
    EXPECT_EQ(centredWithin({-1000, 0, -600, 400}, {200, 100}, kLeft), (Rect{-900, 150, -700, 250}));
    EXPECT_EQ(centredWithin(owner, {300, 200}, kLeft), (Rect{-1280, -200, -980, 0}));
    // Its caption shows, when not all of it can.
    EXPECT_EQ(centredWithin(kLeft, {2000, 1200}, kLeft), (Rect{-1280, -200, 720, 1000}));
    EXPECT_EQ(centredWithin({1800, 900, 2000, 1100}, {400, 300}, kPrimary), (Rect{1520, 740, 1920, 1040}));
}

} // namespace
} // namespace ambrel
