#include "ambrel/pixels/encoded_pictures.h"
#include "ambrel/pixels/gif_layout.h"
#include "ambrel/pixels/image_header.h"
#include "ambrel/pixels/tga.h"

#include <gtest/gtest.h>

#include <string>

namespace ambrel {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

Bytes pngHeader()
{
    return bytesOf(std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\x01\x00\0\0\0\x20\x08\x06\0\0\0", 29));
}

/// Two frames of 2 x 1 at (1, 0) and (0, 1) on a canvas of 4 x 3; the first is shown 50 ms and then cleared.
Bytes twoFrameGif()
{
    return bytesOf(std::string("GIF89a\x04\0\x03\0\0\0\0"
                               "\x21\xF9\x04\x08\x05\0\0\0"
                               "\x2C\x01\0\0\0\x02\0\x01\0\0\x02\x02\x44\x01\0"
                               "\x2C\0\0\x01\0\x02\0\x01\0\0\x02\x02\x44\x01\0"
                               "\x3B",
                               52));
}

TEST(ImageHeaderTest, TheContentTellsFormatAndSize)
{
    const ImageHeader png = readImageHeader(pngHeader());
    EXPECT_EQ(png.format, ImageFormat::Png);
    EXPECT_EQ(png.size, (Size{256, 32}));

    const Bytes jpeg = bytesOf(std::string("\xFF\xD8\xFF\xE0\0\x04xx\xFF\xC0\0\x11\x08\0\x10\0\x40\x03", 18));
    EXPECT_EQ(readImageHeader(jpeg).format, ImageFormat::Jpeg);
    EXPECT_EQ(readImageHeader(jpeg).size, (Size{64, 16}));

    EXPECT_EQ(readImageHeader(twoFrameGif()).size, (Size{4, 3}));
    EXPECT_EQ(readImageHeader(bytesOf("not a picture, only text of some length")).format, ImageFormat::Unknown);
    EXPECT_EQ(readImageHeader({}).format, ImageFormat::Unknown);
}

TEST(ImageHeaderTest, ABottomUpAndATopDownBitmapHaveTheSameSize)
{
    Bytes bmp(54);
    bmp[0] = 'B';
    bmp[1] = 'M';
    bmp[14] = 40;
    bmp[18] = 7;
    for (int i = 22; i < 26; ++i)
        bmp[i] = 0xFF; // height -1
    EXPECT_EQ(readImageHeader(bmp).format, ImageFormat::Bmp);
    EXPECT_EQ(readImageHeader(bmp).size, (Size{7, 1}));
}

TEST(ImageHeaderTest, EveryPrefixIsReadWithoutLeavingTheBytes)
{
    for (const Bytes& whole : {pngHeader(), twoFrameGif()}) {
        for (std::size_t length = 0; length <= whole.size(); ++length) {
            // A copy of exact length, so that the address sanitizer sees any step beyond it.
            const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            readImageHeader(part);
            readGifLayout(part);
        }
    }
}

TEST(TgaTest, ASizeThatTheBytesCannotHoldGetsNoMemory)
{
    Bytes picture(18 + 4, 7);
    const std::uint8_t header[] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 32, 0};
    std::copy(std::begin(header), std::end(header), picture.begin());
    EXPECT_EQ(decodeTga(picture).size(), (Size{1, 1}));
    picture[13] = picture[15] = 0x20; // 8193 by 8193
    for (const std::uint8_t kind : {std::uint8_t{2}, std::uint8_t{10}}) {
        picture[2] = kind;
        EXPECT_TRUE(decodeTga(picture).isEmpty());
    }
}

TEST(GifLayoutTest, FramesHaveTheirPlaceTheirDelayAndTheirEnd)
{
    const auto layout = readGifLayout(twoFrameGif());
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->canvas, (Size{4, 3}));
    ASSERT_EQ(layout->frames.size(), 2u);
    EXPECT_EQ(layout->frames[0].area, (Rect{1, 0, 3, 1}));
    EXPECT_EQ(layout->frames[0].delayMs, 50);
    EXPECT_EQ(layout->frames[0].disposal, GifDisposal::ClearToBackground);
    EXPECT_EQ(layout->frames[1].area, (Rect{0, 1, 2, 2}));
    EXPECT_EQ(layout->frames[1].delayMs, 100); // none given
}

TEST(ImageHeaderTest, ACursorPointsWhereItsBestPictureDoes)
{
    const test::IconImage shallow{32, 4, 0xFF00FF00};
    const test::IconImage deep{32, 32, 0xFFFF0000};
    const Bytes cursor = test::cursorFile({shallow, deep}, {{1, 200}, {7, 9}});
    EXPECT_EQ(readImageHeader(cursor).format, ImageFormat::Ico);
    EXPECT_EQ(bestIconImage(cursor), 1) << "places are no depths";
    EXPECT_EQ(cursorHotSpot(cursor), (Point{7, 9}));
    EXPECT_EQ(cursorHotSpot(test::icoFile({shallow, deep})), (Point{0, 0}));
    EXPECT_EQ(cursorHotSpot({}), (Point{0, 0}));
    const Bytes icon = asIconFile(cursor);
    EXPECT_EQ(bestIconImage(icon), 1);
    EXPECT_EQ(icon[2], 1);
    EXPECT_EQ(icon[6 + 16 + 6], 32) << "depths stand where places were";
    EXPECT_EQ(asIconFile(icon), icon);
}

/// A frame of one pixel with what stands before it.
Bytes gifOf(const std::string& extensions)
{
    return bytesOf(std::string("GIF89a\x01\0\x01\0\0\0\0", 13) + extensions +
                   std::string("\x2C\0\0\0\0\x01\0\x01\0\0\x02\x02\x44\x01\0\x3B", 16));
}

TEST(GifLayoutTest, AnAnimationIsShownOnceUnlessItSaysHowOftenItIsRepeated)
{
    const auto plays = [](const std::string& name, const std::string& block) {
        const auto layout = readGifLayout(gifOf("\x21\xFF\x0B" + name + block));
        EXPECT_EQ(layout->frames.size(), 1u);
        return layout->plays;
    };
    EXPECT_EQ(readGifLayout(twoFrameGif())->plays, 1);
    EXPECT_EQ(plays("NETSCAPE2.0", std::string("\x03\x01\0\0\0", 5)), 0) << "for ever";
    EXPECT_EQ(plays("NETSCAPE2.0", std::string("\x03\x01\x02\x01\0", 5)), 0x103);
    EXPECT_EQ(plays("ANIMEXTS1.0", std::string("\x03\x01\x01\0\0", 5)), 2);
    EXPECT_EQ(plays("NETSCAPE2.0", std::string("\x03\x02\x01\0\0", 5)), 1) << "another number of the same program";
    EXPECT_EQ(plays("OTHERS  1.0", std::string("\x03\x01\0\0\0", 5)), 1);
}

TEST(GifLayoutTest, WhatIsSaidOfAFrameIsReadAsPlayersDo)
{
    const auto frame = [](const std::string& extensions) { return readGifLayout(gifOf(extensions))->frames.at(0); };
    const std::string control("\x21\xF9\x04\x10\x02\0\0\0", 8);
    EXPECT_EQ(frame(control).delayMs, 20) << "the shortest that is kept";
    EXPECT_EQ(frame(control).disposal, GifDisposal::RestorePrevious);
    EXPECT_EQ(frame(std::string("\x21\xF9\x04\x0C\x01\0\0\0", 8)).delayMs, 100);
    EXPECT_EQ(frame(std::string("\x21\xF9\x02\x0C\x09\0", 6)).delayMs, 100) << "too short to say anything";
    EXPECT_EQ(frame(control + std::string("\x21\x01\x01\x20\0", 5)).disposal, GifDisposal::Keep)
        << "it was said of a text";
}

TEST(GifComposerTest, AClearedFrameLeavesNothingAndAKeptOneStays)
{
    const Pixel red = packPixel(255, 255, 0, 0);
    const Pixel blue = packPixel(255, 0, 0, 255);
    const Pixel reds[] = {red, red};
    const Pixel blues[] = {blue, 0};
    GifComposer composer({4, 1});
    composer.add({{0, 0, 2, 1}, 0, GifDisposal::Keep}, {reds, 2, 1, 2});
    const Surface& second = composer.add({{1, 0, 3, 1}, 0, GifDisposal::ClearToBackground}, {blues, 2, 1, 2});
    EXPECT_EQ(second.view().at(0, 0), red);
    EXPECT_EQ(second.view().at(1, 0), blue);
    EXPECT_EQ(second.view().at(2, 0), 0u);
    const Surface& third = composer.add({{3, 0, 5, 1}, 0, GifDisposal::Keep}, {reds, 2, 1, 2}); // half outside
    EXPECT_EQ(third.view().at(0, 0), red);
    EXPECT_EQ(third.view().at(1, 0), 0u);
    EXPECT_EQ(third.view().at(3, 0), red);
}

TEST(GifComposerTest, AFrameThatTakesItselfBackLeavesWhatWasBefore)
{
    const Pixel red = packPixel(255, 255, 0, 0);
    const Pixel blue = packPixel(255, 0, 0, 255);
    const Pixel reds[] = {red, red};
    GifComposer composer({2, 1});
    composer.add({{0, 0, 2, 1}, 0, GifDisposal::Keep}, {reds, 2, 1, 2});
    for (int i = 0; i < 2; ++i) { // one after the other: each goes back to what was before the first
        const Surface& covered = composer.add({{i, 0, i + 1, 1}, 0, GifDisposal::RestorePrevious}, {&blue, 1, 1, 1});
        EXPECT_EQ(covered.view().at(i, 0), blue);
        EXPECT_EQ(covered.view().at(1 - i, 0), red);
    }
    const Surface& last = composer.add({{0, 0, 0, 0}, 0, GifDisposal::Keep}, {});
    EXPECT_EQ(last.view().at(0, 0), red);
    EXPECT_EQ(last.view().at(1, 0), red);
}

} // namespace
} // namespace ambrel
