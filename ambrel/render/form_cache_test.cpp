#include "ambrel/render/form_cache.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

class FormCacheTest : public testing::Test {
protected:
    /// Whether the form had to be made.
    bool makes(Size size, int index = 0)
    {
        const int before = m_made;
        const FormCache::Form& form = m_cache.get({size, {}, index, 100, 0}, [&] {
            ++m_made;
            return Surface(size);
        });
        EXPECT_EQ(form.pixels.size(), size);
        EXPECT_EQ(form.key.index, index);
        return m_made != before;
    }

    int madeInOneRound(Size size, int frames)
    {
        int made = 0;
        for (int frame = 0; frame < frames; ++frame)
            made += makes(size, frame);
        return made;
    }

    FormCache m_cache;
    int m_made = 0;
};

TEST_F(FormCacheTest, TheFramesOfAnAnimationAreMadeOnce)
{
    constexpr int kFrames = 24;
    EXPECT_EQ(madeInOneRound({48, 48}, kFrames), kFrames);
    EXPECT_EQ(madeInOneRound({48, 48}, kFrames), 0);
    EXPECT_TRUE(makes({96, 96})); // another size beside it
    EXPECT_EQ(madeInOneRound({48, 48}, kFrames), 0);
}

TEST_F(FormCacheTest, LargeFramesAndFormerSizesDoNotPileUp)
{
    EXPECT_EQ(madeInOneRound({1000, 1000}, 7), 7);
    EXPECT_FALSE(makes({1000, 1000}, 6));
    EXPECT_TRUE(makes({1000, 1000}, 0));      // six are kept
    for (int width = 1; width <= 20; ++width) // as when a window is resized
        EXPECT_TRUE(makes({width, 10}));
    EXPECT_FALSE(makes({15, 10}));
    EXPECT_TRUE(makes({10, 10}));
}

} // namespace
} // namespace ambrel
