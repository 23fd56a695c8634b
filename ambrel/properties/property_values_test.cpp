#include "ambrel/properties/arc_geometry.h"
#include "ambrel/properties/atoms.h"
#include "ambrel/properties/compact_list.h"
#include "ambrel/properties/compact_text.h"
#include "ambrel/properties/value_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace ambrel {
namespace {

TEST(ValueTextTest, WholeNumbersAreDecimalOrHexadecimalAndNothingElse)
{
    EXPECT_EQ(parseLong(L" -17\n"), -17);
    EXPECT_EQ(parseLong(L"+4"), 4);
    EXPECT_EQ(parseLong(L"0xFFFFFFFF"), -1);
    EXPECT_EQ(parseLong(L"-2147483648"), std::numeric_limits<std::int32_t>::min());
    for (const auto* text : {L"", L" ", L"2147483648", L"0x100000000", L"12px", L"1 2", L"+-1", L"--1", L"0x", L"0x-1",
                             L"\u0661", L"1111111111111111111111111111111111111111111111111111111111111111111111"})
        EXPECT_EQ(parseLong(text), std::nullopt) << std::wstring(text).size();
}

TEST(ValueTextTest, FractionsReadBackExactlyWhateverTheLocale)
{
    EXPECT_EQ(parseDouble(L"0.5"), 0.5);
    EXPECT_EQ(parseDouble(L"-2e3"), -2000);
    for (const float value : {0.1f, -3.25f, 1e-30f, std::numeric_limits<float>::max()})
        EXPECT_EQ(static_cast<float>(*parseDouble(formatFloat(value))), value);
    for (const auto* text : {L"", L"0,5", L"nan", L"inf", L"1e999", L"1.0x"})
        EXPECT_EQ(parseDouble(text), std::nullopt);
}

TEST(ValueTextTest, EveryFloatReadsBackExactly)
{
    std::mt19937 random(7);
    for (int i = 0; i < 200'000; ++i) {
        const auto number = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        const std::wstring text = formatFloat(number);
        const auto again = parseFloat(text);
        ASSERT_EQ(again.has_value(), std::isfinite(number)) << i;
        ASSERT_TRUE(!again || std::bit_cast<std::uint32_t>(*again) == std::bit_cast<std::uint32_t>(number)) << i;
    }
}

TEST(ValueTextTest, AFloatIsFiniteAndWhatIsTooSmallForItIsZero)
{
    for (const auto* text : {L"3.5e38", L"-1e39", L"1e300", L"1e999", L"nan", L"-inf", L"0,5", L"", L"1e"})
        EXPECT_EQ(parseFloat(text), std::nullopt) << std::wstring(text).size();
    EXPECT_EQ(parseFloat(L" +1e-60 "), 0);
    EXPECT_EQ(parseFloat(L"1e-45"), std::numeric_limits<float>::denorm_min());
    // Exactly between two floats but for its last digit, which a double does not hold.
    EXPECT_EQ(parseFloat(L"1.00000005960464477539062500000001"), std::nextafter(1.0f, 2.0f));
}

TEST(ValueTextTest, NumbersForPeopleShowNoBinaryRests)
{
    EXPECT_EQ(formatRounded(0.1f * 7), L"0.7");
    EXPECT_EQ(formatRounded(100), L"100");
    EXPECT_EQ(formatRounded(-0.25f), L"-0.25");
}

TEST(ValueTextTest, BooleansAreNumbersOrWords)
{
    EXPECT_EQ(parseBool(L"1"), true);
    EXPECT_EQ(parseBool(L"-1"), true);
    EXPECT_EQ(parseBool(L"0"), false);
    EXPECT_EQ(parseBool(L" True "), true);
    EXPECT_EQ(parseBool(L"FALSE"), false);
    EXPECT_EQ(parseBool(L"yes"), std::nullopt);
    EXPECT_EQ(parseBool(L""), std::nullopt);
}

TEST(ValueTextTest, ColoursAreWrittenWithEightDigits)
{
    EXPECT_EQ(formatColor(0x00FF00FF), L"0x00FF00FF");
    EXPECT_EQ(formatColor(0), L"0x00000000");
    EXPECT_EQ(parseColor(L"0x8000000F"), 0x8000000Fu);
    EXPECT_EQ(parseColor(L"4294967295"), 0xFFFFFFFFu);
    EXPECT_EQ(parseColor(L"red"), std::nullopt);
}

TEST(AtomTest, EqualTextsAreOneAtomAndTheEmptyTextIsTheDefault)
{
    const std::wstring built = std::wstring(L"Tool") + L"tip";
    EXPECT_EQ(Atom(built), Atom(L"Tooltip"));
    EXPECT_NE(Atom(L"Tooltip"), Atom(L"tooltip"));
    EXPECT_EQ(Atom(L""), Atom());
    EXPECT_EQ(Atom(built).text().data(), Atom(L"Tooltip").text().data());
}

TEST(SmallBlocksTest, BlocksDoNotOverlapAndAreReused)
{
    const std::size_t before = blockBytesInUse();
    std::vector<std::pair<unsigned char*, std::size_t>> blocks;
    for (std::size_t i = 0; i < 2000; ++i) {
        const std::size_t size = 1 + i % kLargestSmallBlock;
        auto* block = static_cast<unsigned char*>(allocateBlock(size));
        std::memset(block, static_cast<int>(i & 0xFF), size);
        blocks.emplace_back(block, size);
    }
    for (std::size_t i = 0; i < blocks.size(); ++i)
        for (std::size_t byte = 0; byte < blocks[i].second; ++byte)
            ASSERT_EQ(blocks[i].first[byte], i & 0xFF);
    for (const auto& [block, size] : blocks)
        releaseBlock(block, size);
    EXPECT_EQ(blockBytesInUse(), before);
    void* block = allocateBlock(40);
    releaseBlock(block, 40);
    EXPECT_EQ(allocateBlock(33), block) << "sizes share blocks in steps of eight";
    releaseBlock(block, 33);
}

TEST(CompactListTest, HoldsItsEntriesWhileGrowingAndTakesThemOut)
{
    const std::size_t before = blockBytesInUse();
    {
        CompactList<std::shared_ptr<int>> list;
        const auto shared = std::make_shared<int>(0);
        for (int i = 0; i < 100; ++i)
            list.add(shared);
        EXPECT_EQ(shared.use_count(), 101);
        list[7] = std::make_shared<int>(7);
        EXPECT_EQ(*list.take(7), 7);
        EXPECT_EQ(list.size(), 99u);
        EXPECT_EQ(shared.use_count(), 100);
        const auto moved = std::move(list);
        EXPECT_EQ(list.size(), 0u);
        EXPECT_EQ(moved.size(), 99u);
    }
    EXPECT_EQ(blockBytesInUse(), before);
}

TEST(CompactTextTest, KeepsAnyCharactersInABlockOfItsOwn)
{
    const std::size_t before = blockBytesInUse();
    {
        const std::wstring odd(L"a\0b \xD83D", 5);
        CompactText text(odd);
        EXPECT_EQ(text.view(), odd);
        text = CompactText(text.view().substr(0, 2)); // a part of itself
        EXPECT_EQ(text.view(), std::wstring_view(L"a\0", 2));
        const CompactText moved = std::move(text);
        EXPECT_EQ(moved.view().size(), 2u);
        EXPECT_TRUE(text.view().empty()); // NOLINT(bugprone-use-after-move): empty is what it must be
        const std::wstring large(100'000, L'x');
        EXPECT_EQ(CompactText(large).view(), large);
    }
    EXPECT_EQ(blockBytesInUse(), before);
}

TEST(ArcTest, PointsRunClockwiseFromThreeOClock)
{
    const Arc quarter{100, 100, 50, 0, 90, 0};
    const auto points = arcPoints(quarter);
    ASSERT_GT(points.size(), 10u);
    EXPECT_EQ(points.front(), (ArcPoint{150, 100}));
    EXPECT_EQ(points.back(), (ArcPoint{100, 150}));
    const auto ticks = arcTicks({100, 100, 50, 0, -180, 90}, 90, 10);
    ASSERT_EQ(ticks.size(), 3u);
    EXPECT_EQ(ticks[0].outer, (ArcPoint{100, 150}));
    EXPECT_EQ(ticks[1].inner, (ArcPoint{140, 100}));
    EXPECT_EQ(ticks[2].outer, (ArcPoint{100, 50}));
}

TEST(ArcTest, OddNumbersDrawNothingAndManyTicksAreBounded)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(arcPoints({0, 0, nan, 0, 90, 0}).empty());
    EXPECT_TRUE(arcPoints({0, 0, 10, 0, 1e30, 0}).empty());
    EXPECT_TRUE(arcPoints({0, 0, -1, 0, 90, 0}).empty());
    EXPECT_TRUE(arcTicks({0, 0, 10, 0, 90, 0}, 0, 5).empty());
    EXPECT_TRUE(arcTicks({0, 0, 10, 0, 90, 0}, nan, 5).empty());
    EXPECT_EQ(arcTicks({0, 0, 10, 0, 360, 0}, 1e-9, 5).size(), 720u);
}

} // namespace
} // namespace ambrel
