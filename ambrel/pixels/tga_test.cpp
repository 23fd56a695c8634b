#include "ambrel/pixels/image_header.h"
#include "ambrel/pixels/tga.h"

#include <gtest/gtest.h>

namespace ambrel {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// Two by two pixels.
Bytes file(int kind, int depth, int flags, const Bytes& pixels)
{
    Bytes bytes = {0,
                   0,
                   static_cast<std::uint8_t>(kind),
                   0,
                   0,
                   0,
                   0,
                   0,
                   0,
                   0,
                   0,
                   0,
                   2,
                   0,
                   2,
                   0,
                   static_cast<std::uint8_t>(depth),
                   static_cast<std::uint8_t>(flags)};
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

constexpr Pixel kRed = 0xFFFF0000;
constexpr Pixel kGreen = 0xFF00FF00;
constexpr Pixel kBlue = 0xFF0000FF;
constexpr Pixel kWhite = 0xFFFFFFFF;

/// Red, green, blue, white, in the file's order.
const Bytes kFourColours = {0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255};

TEST(TgaTest, RowsAndPixelsRunTheWayTheHeaderSays)
{
    const struct {
        int flags;
        Pixel upperLeft, upperRight, lowerLeft, lowerRight;
    } kCases[] = {{0x20, kRed, kGreen, kBlue, kWhite},
                  {0x00, kBlue, kWhite, kRed, kGreen},
                  {0x30, kGreen, kRed, kWhite, kBlue},
                  {0x10, kWhite, kBlue, kGreen, kRed}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.flags);
        const Bytes bytes = file(2, 24, c.flags, kFourColours);
        EXPECT_EQ(readImageHeader(bytes).format, ImageFormat::Tga);
        const Surface picture = decodeTga(bytes);
        ASSERT_EQ(picture.size(), (Size{2, 2}));
        EXPECT_EQ(picture.view().at(0, 0), c.upperLeft);
        EXPECT_EQ(picture.view().at(1, 0), c.upperRight);
        EXPECT_EQ(picture.view().at(0, 1), c.lowerLeft);
        EXPECT_EQ(picture.view().at(1, 1), c.lowerRight);
    }
}

TEST(TgaTest, RunsGoOnInTheNextRow)
{
    const Surface picture = decodeTga(file(10, 24, 0x20, {0x82, 0, 0, 255, 0x00, 255, 0, 0}));
    ASSERT_EQ(picture.size(), (Size{2, 2}));
    EXPECT_EQ(picture.view().at(1, 0), kRed);
    EXPECT_EQ(picture.view().at(0, 1), kRed);
    EXPECT_EQ(picture.view().at(1, 1), kBlue);
}

TEST(TgaTest, AlphaCountsUnlessItIsNowhere)
{
    const Surface half = decodeTga(file(2, 32, 0x28, {0, 0, 255, 128, 0, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0, 0}));
    EXPECT_EQ(half.view().at(0, 0), 0x80800000u);
    EXPECT_EQ(half.view().at(1, 0), 0u);
    const Surface unfilled = decodeTga(file(2, 32, 0x20, {0, 0, 255, 0, 0, 255, 0, 0, 255, 0, 0, 0, 255, 255, 255, 0}));
    EXPECT_EQ(unfilled.view().at(0, 0), kRed);
    EXPECT_EQ(unfilled.view().at(1, 1), kWhite);
}

TEST(TgaTest, EveryPrefixIsRefused)
{
    for (const Bytes& whole : {file(2, 24, 0, kFourColours), file(10, 24, 0x20, {0x82, 0, 0, 255, 0x00, 255, 0, 0})})
        for (std::size_t length = 0; length < whole.size(); ++length)
            EXPECT_TRUE(decodeTga(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))).isEmpty());
}

TEST(TgaTest, PixelsOfNoBytesAreNotMade)
{
    EXPECT_TRUE(decodeTga(file(2, 0, 0, kFourColours)).isEmpty());
    EXPECT_TRUE(decodeTga(file(2, 16, 0, kFourColours)).isEmpty());
}

} // namespace
} // namespace ambrel
