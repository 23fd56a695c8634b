#include "ambrel/window/access_key.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

TEST(AccessKeyTest, ASingleAmpersandMarksTheCharacterBehindIt)
{
    EXPECT_EQ(accessKeyOf(L"&Save"), L'S');
    EXPECT_EQ(accessKeyOf(L"Übe&r"), L'r');
    EXPECT_EQ(accessKeyOf(L"&Ändern"), L'Ä');
    EXPECT_EQ(accessKeyOf(L"&one &two"), L't'); // as it is drawn
}

TEST(AccessKeyTest, PairsTrailingOnesAndSpacesMarkNothing)
{
    for (const wchar_t* plain : {L"", L"&", L"Save", L"Q&&A", L"Save &", L"this & that", L"&&&&x"})
        EXPECT_EQ(accessKeyOf(plain), 0) << plain;
    EXPECT_EQ(accessKeyOf(L"&&&x"), L'x');
}

} // namespace
} // namespace ambrel
