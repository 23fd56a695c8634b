#include "ambrel/window/drag_geometry.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

constexpr Rect kStart{-300, 100, 0, 300}; // on a monitor to the left of the primary one
const SizeLimits kLimits{{100, 50}, {400, 250}};

TEST(DragGeometryTest, AWindowFollowsThePointerWithItsSize)
{
    EXPECT_EQ(draggedPlace(kStart, {}, {-50, 1000}, kLimits), (Rect{-350, 1100, -50, 1300}));
}

TEST(DragGeometryTest, AnEdgeFollowsThePointerAndTheOppositeOneStays)
{
    EXPECT_EQ(draggedPlace(kStart, {.left = true}, {-20, 70}, kLimits), (Rect{-320, 100, 0, 300}));
    EXPECT_EQ(draggedPlace(kStart, {.right = true, .bottom = true}, {20, -30}, kLimits), (Rect{-300, 100, 20, 270}));
    EXPECT_EQ(draggedPlace(kStart, {.left = true, .top = true}, {20, 30}, kLimits), (Rect{-280, 130, 0, 300}));
}

TEST(DragGeometryTest, AnEdgeStopsAtTheLeastAndTheLargestSize)
{
    EXPECT_EQ(draggedPlace(kStart, {.left = true, .top = true}, {1000, 1000}, kLimits), (Rect{-100, 250, 0, 300}));
    EXPECT_EQ(draggedPlace(kStart, {.right = true, .bottom = true}, {1000, 1000}, kLimits),
              (Rect{-300, 100, 100, 350}));
    EXPECT_EQ(draggedPlace(kStart, {.right = true}, {-1000, 0}, {}), (Rect{-300, 100, -300, 300}));
}

} // namespace
} // namespace ambrel
