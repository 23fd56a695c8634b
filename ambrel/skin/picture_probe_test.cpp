#include "ambrel/skin/limits.h"
#include "ambrel/skin/picture_probe.h"
#include "ambrel/skin/test_packages.h"

#include <gtest/gtest.h>

namespace ambrel::skin::test {
namespace {

using namespace std::string_literals;

std::string little16(int value)
{
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
}

std::string little32(int value)
{
    return little16(value & 0xFFFF) + little16((value >> 16) & 0xFFFF);
}

std::string bitmapHeader(int width, int height, int bits)
{
    return little32(40) + little32(width) + little32(height) + little16(1) + little16(bits) + std::string(24, '\0');
}

std::string bmp(int width, int height)
{
    return "BM" + little32(0) + little32(0) + little32(54) + bitmapHeader(width, height, 24) +
           std::string(static_cast<std::size_t>(std::abs(height) * ((width * 3 + 3) / 4 * 4)), 'x');
}

std::string gifFrame(int left, int width)
{
    return "\x2C" + little16(left) + little16(0) + little16(width) + little16(2) + "\0\x02\x02\x4C\x01\0"s;
}

std::string gif(const std::string& frames)
{
    return "GIF89a" + little16(3) + little16(2) + "\x80\0\0abcdef"s + "\x21\xF9\x04\0\x0A\0\0\0"s + frames + "\x3B";
}

std::string jpeg(int width, int height)
{
    const auto big16 = [](int value) {
        return std::string{static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
    };
    return "\xFF\xD8\xFF\xE0\0\x04xx"s + "\xFF\xC0\0\x0B\x08"s + big16(height) + big16(width) + "\x01\x01\x11\0"s +
           "\xFF\xDA\0\x08\x01\x01\0\0\x3F\0pixels\xFF\xD9"s;
}

std::string icon(const std::string& image)
{
    return "\0\0\1\0\1\0"s + "\x10\x10\0\0\1\0\x20\0"s + little32(static_cast<int>(image.size())) + little32(22) +
           image;
}

Outcome<PictureInfo> probe(std::string_view bytes)
{
    return probePicture(bytesOf(bytes), "picture");
}

Code codeOf(std::string_view bytes)
{
    const auto info = probe(bytes);
    return info ? Code{} : info.error().code;
}

std::string pngText(std::uint32_t width, std::uint32_t height)
{
    const Bytes bytes = png(width, height);
    return std::string(bytes.begin(), bytes.end());
}

const std::string kSmallIcon = icon(bitmapHeader(16, 32, 32) + std::string(16 * 16 * 4 + 64, 'x'));

TEST(PictureProbeTest, TellsKindAndSizeByTheBytes)
{
    struct Case {
        std::string bytes;
        PictureInfo info;
    };
    const Case cases[] = {
        {pngText(3, 2), {PictureKind::Png, 3, 2, 1}},
        {bmp(3, 2), {PictureKind::Bmp, 3, 2, 1}},
        {bmp(3, -2), {PictureKind::Bmp, 3, 2, 1}},
        {jpeg(300, 2), {PictureKind::Jpeg, 300, 2, 1}},
        {gif(gifFrame(0, 3)), {PictureKind::Gif, 3, 2, 1}},
        {gif(gifFrame(0, 3) + gifFrame(1, 2)), {PictureKind::Gif, 3, 2, 2}},
        {kSmallIcon, {PictureKind::Icon, 16, 16, 1}},
        {icon(pngText(256, 256)), {PictureKind::Icon, 256, 256, 1}},
    };
    for (const Case& one : cases) {
        const auto info = probe(one.bytes);
        ASSERT_TRUE(info) << info.error().text();
        EXPECT_EQ(info.value(), one.info) << static_cast<int>(one.info.kind);
    }
}

TEST(PictureProbeTest, RefusesPicturesCutOffAnywhereBeforeTheirPixels)
{
    for (const std::string& whole :
         {pngText(3, 2), bmp(3, 2), gif(gifFrame(0, 3)), kSmallIcon, jpeg(3, 2).substr(0, 22)}) {
        for (std::size_t size = 0; size < whole.size(); ++size)
            EXPECT_FALSE(probe(std::string_view(whole).substr(0, size)).ok()) << whole.substr(0, 6) << size;
    }
}

TEST(PictureProbeTest, RefusesImpossiblePictures)
{
    EXPECT_EQ(codeOf("SPP1whatever"), Code::UnknownPicture);
    EXPECT_EQ(codeOf("<svg/>"), Code::UnknownPicture);
    EXPECT_EQ(codeOf(bmp(0, 2)), Code::BrokenPicture);
    EXPECT_EQ(codeOf(gif("")), Code::BrokenPicture);
    EXPECT_EQ(codeOf(gif(gifFrame(1, 3))), Code::BrokenPicture); // reaches beyond the picture
    EXPECT_EQ(codeOf(jpeg(0, 3)), Code::BrokenPicture);
    EXPECT_EQ(codeOf(jpeg(9000, 3)), Code::PictureTooLarge);
    EXPECT_EQ(codeOf(icon(icon(std::string(60, 'x')))), Code::BrokenPicture);
    std::string absurd = bmp(3, 2);
    absurd.replace(18, 8, "\xFF\xFF\xFF\x7F\0\0\0\x80"s);
    EXPECT_NE(codeOf(absurd), Code{});
    std::string manyFrames;
    for (int i = 0; i <= kPictureFrames; ++i)
        manyFrames += gifFrame(0, 1);
    EXPECT_EQ(codeOf(gif(manyFrames)), Code::PictureTooLarge);
}

} // namespace
} // namespace ambrel::skin::test
