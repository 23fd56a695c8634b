#include "ambrel/objects/invalid_region.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace ambrel {
namespace {

using morvane::Rect;

TEST(InvalidRegionTest, JoinsWhatCostsNothingAndKeepsApartWhatLiesApart)
{
    InvalidRegion region;
    region.add({0, 0, 10, 10});
    region.add({2, 2, 5, 5});    // inside
    region.add({10, 0, 20, 10}); // beside
    region.add({});
    ASSERT_EQ(region.rects().size(), 1u);
    EXPECT_EQ(region.rects()[0], (Rect{0, 0, 20, 10}));
    region.add({500, 500, 510, 510});
    EXPECT_EQ(region.rects().size(), 2u);
    region.clip({0, 0, 15, 600});
    ASSERT_EQ(region.rects().size(), 1u);
    EXPECT_EQ(region.rects()[0], (Rect{0, 0, 15, 10}));
}

TEST(InvalidRegionTest, CoversEverythingAddedWithABoundedNumberOfRectangles)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> at(0, 900);
    std::uniform_int_distribution<int> extent(1, 60);
    for (int round = 0; round < 50; ++round) {
        InvalidRegion region;
        std::vector<Rect> added;
        for (int i = 0; i < 60; ++i) {
            added.push_back(Rect::at({at(random), at(random)}, {extent(random), extent(random)}));
            region.add(added.back());
            ASSERT_LE(region.rects().size(), InvalidRegion::kMaxRects);
        }
        for (const Rect& rect : added) {
            bool covered = false;
            for (const Rect& held : region.rects())
                covered = covered || held.contains(rect);
            EXPECT_TRUE(covered);
            EXPECT_TRUE(region.bounds().contains(rect));
        }
    }
}

} // namespace
} // namespace ambrel
