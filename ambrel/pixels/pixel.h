// One pixel: 32 bits, 0xAARRGGBB, colour premultiplied with alpha (in memory the bytes stand as B, G, R, A).
#pragma once

#include <algorithm>
#include <cstdint>

namespace ambrel {

using Pixel = std::uint32_t;

constexpr int alphaOf(Pixel p)
{
    return static_cast<int>(p >> 24);
}
constexpr int redOf(Pixel p)
{
    return static_cast<int>((p >> 16) & 0xFF);
}
constexpr int greenOf(Pixel p)
{
    return static_cast<int>((p >> 8) & 0xFF);
}
constexpr int blueOf(Pixel p)
{
    return static_cast<int>(p & 0xFF);
}

constexpr Pixel packPixel(int a, int r, int g, int b)
{
    return static_cast<Pixel>(a) << 24 | static_cast<Pixel>(r) << 16 | static_cast<Pixel>(g) << 8 |
           static_cast<Pixel>(b);
}

/// value / 255 rounded to nearest, exact for 0..255 * 255.
constexpr int div255(int value)
{
    const int v = value + 128;
    return (v + (v >> 8)) >> 8;
}

/// A plain colour with straight alpha as a premultiplied pixel.
constexpr Pixel premultiplied(int a, int r, int g, int b)
{
    return packPixel(a, div255(r * a), div255(g * a), div255(b * a));
}

/// The pixel with every channel, alpha too, weakened by opacity / 255.
constexpr Pixel weakened(Pixel p, int opacity)
{
    return packPixel(div255(alphaOf(p) * opacity), div255(redOf(p) * opacity), div255(greenOf(p) * opacity),
                     div255(blueOf(p) * opacity));
}

/// `source` over `below`. A source whose colour exceeds its alpha is held at white instead of wrapping around.
constexpr Pixel over(Pixel source, Pixel below)
{
    const int rest = 255 - alphaOf(source);
    const auto channel = [rest](int s, int d) { return std::min(255, s + div255(d * rest)); };
    return packPixel(channel(alphaOf(source), alphaOf(below)), channel(redOf(source), redOf(below)),
                     channel(greenOf(source), greenOf(below)), channel(blueOf(source), blueOf(below)));
}

/// A colour as skins store it, 0x00BBGGRR, as an opaque pixel. The high byte is ignored.
constexpr Pixel opaquePixel(std::uint32_t colourRef)
{
    return 0xFF000000u | (colourRef & 0xFF) << 16 | (colourRef & 0xFF00) | ((colourRef >> 16) & 0xFF);
}

} // namespace ambrel
