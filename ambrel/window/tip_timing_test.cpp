#include "ambrel/window/tip_timing.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

TEST(TipTimingTest, ATipWaitsStaysAndExpiresUntilThePointerComesAnew)
{
    TipTiming tip;
    tip.offer(1, L"Save", 1000);
    EXPECT_FALSE(tip.update(1499));
    tip.offer(1, L"Save", 1499); // asking again does not start the wait again
    EXPECT_TRUE(tip.update(1500));
    EXPECT_TRUE(tip.isShown());
    EXPECT_FALSE(tip.update(6499));
    EXPECT_TRUE(tip.update(6500));
    EXPECT_FALSE(tip.isShown());
    tip.offer(1, L"Save", 6600);
    EXPECT_EQ(tip.nextDue(), TipTiming::kNever);
    tip.dismiss(6700);
    tip.offer(1, L"Save", 9000);
    EXPECT_EQ(tip.nextDue(), 9500);
}

TEST(TipTimingTest, TheNextTipOfARowComesAtOnceAndAnEmptyOneHides)
{
    TipTiming tip;
    tip.offer(1, L"Save", 1000);
    tip.update(1500);
    tip.dismiss(2000);
    tip.offer(2, L"Open", 2100);
    EXPECT_TRUE(tip.update(2100));
    tip.offer(2, L"42", 2200); // a value that changes while shown
    EXPECT_TRUE(tip.isShown());
    EXPECT_EQ(tip.text(), L"42");
    tip.offer(2, L"", 2300);
    EXPECT_FALSE(tip.isShown());
    tip.offer(3, L"Close", 2601);
    EXPECT_FALSE(tip.update(2601));
}

} // namespace
} // namespace ambrel
