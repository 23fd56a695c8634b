#include "ambrel/skin/position.h"

#include <gtest/gtest.h>

namespace ambrel::skin {
namespace {

TEST(SkinPositionTest, ReadsAndWritesTheCompactForm)
{
    const std::string text = "HA0,HST3,l114,r0,w206:VA2,VST1,t-131,b7,h109";
    const auto position = parsePosition(text);
    ASSERT_TRUE(position);
    EXPECT_EQ(position->horizontal, (PositionAxis{0, 3, 114, 0, 206}));
    EXPECT_EQ(position->vertical, (PositionAxis{2, 1, -131, 7, 109}));
    EXPECT_EQ(formatPosition(*position), text);
    EXPECT_EQ(parsePosition("w206,r0,l114,HST3,HA0:h109,b7,t-131,VST1,VA2"), position);
}

TEST(SkinPositionTest, RefusesAnythingElse)
{
    for (const char* text :
         {"", ":", "HA0,HST3,l114,r0,w206", "HA0,HST3,l114,r0,w206:", "HA0,HST3,l114,r0:VA0,VST3,t131,b0,h109",
          "HA0,HST3,l1,l1,w206:VA0,VST3,t131,b0,h109", "HA3,HST3,l114,r0,w206:VA0,VST3,t131,b0,h109",
          "HA0,HST4,l114,r0,w206:VA0,VST3,t131,b0,h109", "HA0,HST3,l1000001,r0,w206:VA0,VST3,t131,b0,h109",
          "HA0,HST3,l99999999999999999999,r0,w206:VA0,VST3,t131,b0,h109", "VA0,VST3,t131,b0,h109:HA0,HST3,l114,r0,w206",
          "HA0,HST3,l114,r0,w206,:VA0,VST3,t131,b0,h109", "HA0,HST3,l 114,r0,w206:VA0,VST3,t131,b0,h109",
          "HA0,HST3,l114,r0,w206:VA0,VST3,t131,b0,h109:"})
        EXPECT_FALSE(parsePosition(text)) << text;
}

} // namespace
} // namespace ambrel::skin
