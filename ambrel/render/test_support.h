// What the tests of the renderer share.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/picture_decoder.h"
#include "host/host.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace ambrel::test {

constexpr Pixel kRed = packPixel(255, 255, 0, 0);
constexpr Pixel kGreen = packPixel(255, 0, 255, 0);
constexpr Pixel kBlue = packPixel(255, 0, 0, 255);
constexpr Pixel kWhite = 0xFFFFFFFF;
constexpr OLE_COLOR kRedColour = 0x000000FF;

inline Surface surfaceOf(Size size, Pixel colour)
{
    Surface surface(size);
    fillRect({surface.view(), {}, surface.view().bounds()}, surface.view().bounds(), colour);
    return surface;
}

inline std::wstring pathOfPicture(const std::wstring& name)
{
    return AMBREL_RENDER_PICTURES L"/" + name + L".png";
}

/// Compares with a kept picture, each channel within a tolerance. A differing one is left beside the test program as
/// `name`.actual.png. With AMBREL_UPDATE_PICTURES set in the environment the kept picture is replaced instead.
inline void expectLooksLike(const std::wstring& name, ConstPixelView actual, int tolerance = 2)
{
    if (std::getenv("AMBREL_UPDATE_PICTURES")) {
        ASSERT_TRUE(writeFile(pathOfPicture(name), encodePng(actual)));
        return;
    }
    const auto bytes = readFile(pathOfPicture(name));
    const auto kept = bytes ? decodePicture(*bytes) : std::nullopt;
    const std::string shown(name.begin(), name.end());
    ASSERT_TRUE(kept) << "no kept picture " << shown;
    const ConstPixelView wanted = kept->frames.front().view();
    int differing = wanted.width == actual.width && wanted.height == actual.height ? 0 : -1;
    for (int y = 0; differing >= 0 && y < actual.height; ++y) {
        for (int x = 0; x < actual.width; ++x) {
            const Pixel a = actual.at(x, y);
            const Pixel b = wanted.at(x, y);
            const auto isFar = [&](int one, int other) { return std::abs(one - other) > tolerance; };
            if (isFar(alphaOf(a), alphaOf(b)) || isFar(redOf(a), redOf(b)) || isFar(greenOf(a), greenOf(b)) ||
                isFar(blueOf(a), blueOf(b)))
                ++differing;
        }
    }
    EXPECT_EQ(differing, 0) << shown;
    if (differing != 0)
        writeFile(name + L".actual.png", encodePng(actual));
}

/// Living GDI objects of this process, from its table of handles.
inline int gdiObjectCount()
{
    struct Entry {
        std::uint64_t kernelObject;
        std::uint16_t owner;
        std::uint16_t lock;
        std::uint16_t unique;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint64_t userPointer;
    };
    constexpr int kEntries = 65536;
    constexpr std::size_t kTableInProcessBlock = 0xF8;
    const auto processBlock = reinterpret_cast<const std::uint8_t*(NTAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetCurrentPeb")));
    const Entry* table = *reinterpret_cast<const Entry* const*>(processBlock() + kTableInProcessBlock);
    int count = 0;
    for (int i = 0; i < kEntries; ++i)
        count += table[i].type != 0;
    return count;
}

} // namespace ambrel::test
