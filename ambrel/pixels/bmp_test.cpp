#include "ambrel/pixels/bmp.h"
#include "ambrel/pixels/encoded_pictures.h"

#include <gtest/gtest.h>

#include <random>

namespace ambrel {
namespace {

using namespace test;

constexpr Pixel kRed = 0xFFFF0000;
constexpr Pixel kGreen = 0xFF00FF00;
constexpr Pixel kBlue = 0xFF0000FF;
constexpr Pixel kWhite = 0xFFFFFFFF;
constexpr Pixel kHalfWhite = 0x80808080;

TEST(BmpTest, EveryDepthAndOrderOfABitmapGivesTheSamePixels)
{
    for (const BmpKind& kind : everyBmpKind()) {
        SCOPED_TRACE(kind.name);
        const Surface picture = decodeBmp(bmpFile(kind));
        const ConstPixelView pixels = picture.view();
        ASSERT_EQ(pixels.bounds(), (Rect{0, 0, kBmpWidth, kBmpHeight}));
        const Pixel kColours[] = {kRed, kGreen, kBlue, kind.alphaMask != 0 ? kHalfWhite : kWhite};
        for (int y = 0; y < kBmpHeight; ++y)
            for (int x = 0; x < kBmpWidth; ++x)
                EXPECT_EQ(pixels.at(x, y), kColours[(x + y) % (kind.depth == 1 ? 2 : 4)]) << x << ' ' << y;
    }
}

TEST(BmpTest, AbsurdHeadersOfBitmapsAreRefused)
{
    const struct {
        const char* what;
        std::size_t at;
        std::uint32_t value;
        int bytes;
    } kChanges[] = {
        {"no width", 18, 0, 4},
        {"no height", 22, 0, 4},
        {"a width beyond every limit", 18, 0x7FFFFFFF, 4},
        {"the least height", 22, 0x80000000, 4},
        {"a negative width", 18, 0xFFFFFFFB, 4},
        {"a depth that is none", 28, 7, 2},
        {"an unknown packing", 30, 99, 4},
        {"far more pixels than bytes", 18, 10000, 4},
        {"pixels beyond the file", 10, 0x00FFFFFF, 4},
        {"an unknown header", 14, 17, 4},
    };
    for (const auto& change : kChanges) {
        Bytes bytes = bmpFile({"", 24});
        for (int i = 0; i < change.bytes; ++i)
            bytes[change.at + i] = static_cast<std::uint8_t>(change.value >> (8 * i));
        EXPECT_TRUE(decodeBmp(bytes).isEmpty()) << change.what;
    }
}

TEST(BmpTest, RunsLeaveThePictureNeitherBySizeNorByJump)
{
    const std::size_t start = bmpFile({"", 8, 1}).size() - 32; // three rows of ten bytes and the end
    const struct {
        const char* what;
        Bytes runs;
        Pixel first; // at the lower left, where a file begins
        Pixel second;
    } kCases[] = {
        {"a run wider than the picture", {255, 1, 0, 1}, kGreen, kGreen},
        {"a jump beyond it", {1, 2, 0, 2, 255, 255, 9, 1, 0, 1}, kBlue, kRed},
        {"more lines than there are", {0, 0, 0, 0, 0, 0, 0, 0, 5, 1, 0, 1}, kRed, kRed},
        {"single pixels beyond the line", {0, 7, 1, 2, 3, 1, 2, 3, 1, 0, 0, 1}, kGreen, kBlue},
    };
    for (const auto& c : kCases) {
        Bytes bytes = bmpFile({"", 8, 1});
        bytes.resize(start);
        bytes.insert(bytes.end(), c.runs.begin(), c.runs.end());
        const Surface picture = decodeBmp(bytes);
        ASSERT_FALSE(picture.isEmpty()) << c.what;
        EXPECT_EQ(picture.view().at(0, kBmpHeight - 1), c.first) << c.what;
        EXPECT_EQ(picture.view().at(1, kBmpHeight - 1), c.second) << c.what;
    }
}

TEST(BmpTest, AFewRunsThatClaimToBeManyGetNoMemory)
{
    Bytes bytes = bmpFile({"", 8, 1});
    for (const std::size_t at : {std::size_t{18}, std::size_t{22}})
        bytes[at] = bytes[at + 1] = 0x1F; // 7967 by 7967
    EXPECT_TRUE(decodeBmp(bytes).isEmpty());
}

TEST(BmpTest, EveryPrefixAndChangeStaysInsideTheBytes)
{
    constexpr int kTries = 400;
    std::mt19937 random(1234);
    for (const BmpKind& kind : everyBmpKind()) {
        const Bytes whole = bmpFile(kind);
        for (std::size_t length = 0; length < whole.size(); ++length) // of exact length, so that a step beyond is seen
            decodeBmp(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
        for (int i = 0; i < kTries; ++i) {
            Bytes changed = whole;
            for (int change = 0; change < 4; ++change)
                changed[random() % changed.size()] = static_cast<std::uint8_t>(random());
            decodeBmp(changed);
        }
    }
}

} // namespace
} // namespace ambrel
