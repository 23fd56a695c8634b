#include "ambrel/pixels/image_header.h"
#include "ambrel/pixels/tga.h"

#include <gtest/gtest.h>

#include <array>

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
constexpr Pixel kBlack = 0xFF000000;

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

/// A header with everything in it: a comment of three letters and a palette of two bytes a colour, whose first one is
/// named 5. Two by two pixels.
Bytes paletteFile(int kind, int paletteDepth, const Bytes& palette, const Bytes& pixels)
{
    const auto colours = static_cast<std::uint8_t>(palette.size() / static_cast<std::size_t>((paletteDepth + 7) / 8));
    Bytes bytes = {3,
                   1,
                   static_cast<std::uint8_t>(kind),
                   5,
                   0,
                   colours,
                   0,
                   static_cast<std::uint8_t>(paletteDepth),
                   0,
                   0,
                   0,
                   0,
                   2,
                   0,
                   2,
                   0,
                   8,
                   0x20,
                   'a',
                   'b',
                   'c'};
    bytes.insert(bytes.end(), palette.begin(), palette.end());
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

void expectPixels(const Bytes& bytes, const std::array<Pixel, 4>& expected)
{
    const ImageHeader header = readImageHeader(bytes);
    EXPECT_EQ(header.format, ImageFormat::Tga);
    EXPECT_EQ(header.size, (Size{2, 2}));
    const Surface picture = decodeTga(bytes);
    ASSERT_EQ(picture.size(), (Size{2, 2}));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(picture.view().at(i % 2, i / 2), expected[static_cast<std::size_t>(i)]) << i;
}

/// Red, green, blue, white as palettes of each depth hold them.
const struct {
    int depth;
    Bytes palette;
} kPalettes[] = {{15, {0, 0x7C, 0xE0, 3, 0x1F, 0, 0xFF, 0x7F}},
                 {16, {0, 0x7C, 0xE0, 3, 0x1F, 0, 0xFF, 0x7F}},
                 {24, kFourColours},
                 {32, {0, 0, 255, 255, 0, 255, 0, 255, 255, 0, 0, 255, 255, 255, 255, 255}}};

TEST(TgaTest, PalettesOfEachDepthColourPlainAndPackedPixels)
{
    for (const auto& p : kPalettes) {
        SCOPED_TRACE(p.depth);
        expectPixels(paletteFile(1, p.depth, p.palette, {5, 6, 7, 8}), {kRed, kGreen, kBlue, kWhite});
        expectPixels(paletteFile(9, p.depth, p.palette, {0x82, 7, 0x00, 8}), {kBlue, kBlue, kBlue, kWhite});
    }
}

TEST(TgaTest, PlacesThatAPaletteDoesNotHaveAreBlack)
{
    expectPixels(paletteFile(1, 24, kFourColours, {4, 5, 8, 9}), {kBlack, kRed, kWhite, kBlack});
}

TEST(TgaTest, APaletteMayHaveAlpha)
{
    expectPixels(paletteFile(1, 32, {0, 0, 255, 128, 0, 255, 0, 255}, {5, 6, 5, 6}),
                 {0x80800000u, kGreen, 0x80800000u, kGreen});
}

TEST(TgaTest, APaletteOfATrueColourPictureIsSkippedOver)
{
    Bytes bytes = paletteFile(2, 24, kFourColours, kFourColours);
    bytes[16] = 24;
    expectPixels(bytes, {kRed, kGreen, kBlue, kWhite});
}

TEST(TgaTest, FiveBitsAChannelReachWhiteAndTheSixteenthIsAlphaWhereTheHeaderSaysSo)
{
    const Bytes colours = {0, 0x7C, 0xE0, 3, 0x1F, 0x80, 0xFF, 0xFF};
    for (const int depth : {15, 16})
        expectPixels(file(2, depth, 0x20, colours), {kRed, kGreen, kBlue, kWhite});
    expectPixels(file(2, 16, 0x21, colours), {0, 0, kBlue, kWhite});
    expectPixels(file(10, 16, 0x20, {0x82, 0, 0x7C, 0x00, 0x10, 0x42}), {kRed, kRed, kRed, 0xFF848484});
    expectPixels(file(2, 16, 0x21, {0, 0x7C, 0xE0, 3, 0x1F, 0, 0xFF, 0x7F}), {kRed, kGreen, kBlue, kWhite});
}

TEST(TgaTest, GreyPicturesMayHaveAlpha)
{
    constexpr Pixel kGrey = 0xFF646464;
    expectPixels(file(3, 8, 0x20, {0, 100, 255, 100}), {kBlack, kGrey, kWhite, kGrey});
    expectPixels(file(11, 8, 0x20, {0x81, 100, 0x01, 0, 255}), {kGrey, kGrey, kBlack, kWhite});
    expectPixels(file(3, 16, 0x28, {255, 128, 100, 255, 100, 0, 255, 255}), {0x80808080u, kGrey, 0, kWhite});
    expectPixels(file(3, 16, 0x28, {255, 0, 100, 0, 0, 0, 255, 0}), {kWhite, kGrey, kBlack, kWhite});
}

TEST(TgaTest, BytesInWhichAFieldMakesNoSenseAreNoPicture)
{
    const struct {
        std::size_t at;
        std::uint8_t value;
        const char* what;
    } kOdd[] = {{1, 2, "palette type"},
                {2, 0, "no picture"},
                {2, 32, "unknown kind"},
                {2, 3, "grey with 24 bits"},
                {7, 24, "a palette that is not there"},
                {12, 0, "no width"},
                {14, 0, "no height"},
                {16, 23, "depth"},
                {17, 0x60, "interleaved"},
                {17, 0x2F, "15 bits of alpha"}};
    for (const auto& odd : kOdd) {
        Bytes bytes = file(2, 24, 0x20, kFourColours);
        bytes[odd.at] = odd.value;
        EXPECT_EQ(readImageHeader(bytes).format, ImageFormat::Unknown) << odd.what;
        EXPECT_TRUE(decodeTga(bytes).isEmpty()) << odd.what;
    }
    Bytes noColours = paletteFile(1, 24, {}, {5, 6, 7, 8});
    EXPECT_EQ(readImageHeader(noColours).format, ImageFormat::Unknown);
}

TEST(TgaTest, AFileThatNamesItsFormatMayLeaveRubbishWhereAPaletteWouldBe)
{
    Bytes bytes = file(2, 24, 0x20, kFourColours);
    bytes[7] = 24;
    bytes.resize(bytes.size() + 8);
    constexpr char kName[] = "TRUEVISION-XFILE.";
    bytes.insert(bytes.end(), kName, kName + sizeof kName);
    expectPixels(bytes, {kRed, kGreen, kBlue, kWhite});
}

TEST(TgaTest, EveryPrefixIsRefused)
{
    const Bytes kWholes[] = {file(2, 24, 0, kFourColours),
                             file(10, 24, 0x20, {0x82, 0, 0, 255, 0x00, 255, 0, 0}),
                             file(3, 8, 0x20, {0, 100, 255, 100}),
                             file(2, 15, 0x20, {0, 0x7C, 0xE0, 3, 0x1F, 0, 0xFF, 0x7F}),
                             paletteFile(1, 16, kPalettes[1].palette, {5, 6, 7, 8}),
                             paletteFile(9, 24, kFourColours, {0x82, 7, 0x00, 8})};
    for (const Bytes& whole : kWholes)
        for (std::size_t length = 0; length < whole.size(); ++length)
            EXPECT_TRUE(decodeTga(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))).isEmpty());
}

TEST(TgaTest, PixelsOfNoBytesAreNotMade)
{
    EXPECT_TRUE(decodeTga(file(2, 0, 0, kFourColours)).isEmpty());
    Bytes large = file(11, 8, 0, {0x83, 100});
    large[13] = 0x20; // 8194 wide
    large[15] = 0x20;
    EXPECT_EQ(readImageHeader(large).size, (Size{8194, 8194}));
    EXPECT_TRUE(decodeTga(large).isEmpty());
}

} // namespace
} // namespace ambrel
