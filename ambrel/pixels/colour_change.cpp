#include "ambrel/pixels/colour_change.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace ambrel {

void applyColourKey(PixelView pixels, std::uint32_t colourRef)
{
    const Pixel key = opaquePixel(colourRef);
    for (int y = 0; y < pixels.height; ++y)
        std::replace(pixels.row(y), pixels.row(y) + pixels.width, key, Pixel{0});
}

namespace {

struct Hsl {
    double hue; // 0..6
    double saturation;
    double lightness;
};

Hsl hslOf(double r, double g, double b)
{
    const double most = std::max({r, g, b});
    const double least = std::min({r, g, b});
    const double lightness = (most + least) / 2;
    const double range = most - least;
    if (range <= 0)
        return {0, 0, lightness};
    const double saturation = range / (1 - std::abs(2 * lightness - 1));
    double hue = most == r ? (g - b) / range : most == g ? (b - r) / range + 2 : (r - g) / range + 4;
    if (hue < 0)
        hue += 6;
    return {hue, std::min(saturation, 1.0), lightness};
}

/// One channel of a colour given by hue, saturation and lightness; `offset` is the channel's place on the hue circle.
double channelOf(const Hsl& colour, double offset)
{
    const double chroma = (1 - std::abs(2 * colour.lightness - 1)) * colour.saturation;
    double h = std::fmod(colour.hue + offset, 6.0);
    if (h < 0)
        h += 6;
    const double part = std::clamp(std::abs(h - 3) - 1, 0.0, 1.0);
    return colour.lightness - chroma / 2 + chroma * part;
}

Pixel colourised(Pixel p, const Colourise& change)
{
    const int alpha = alphaOf(p);
    if (alpha == 0)
        return p;
    const double r = redOf(p) / static_cast<double>(alpha);
    const double g = greenOf(p) / static_cast<double>(alpha);
    const double b = blueOf(p) / static_cast<double>(alpha);
    const double lightness = hslOf(r, g, b).lightness;
    const Hsl wanted{change.hue / 60.0, change.saturation / 255.0, lightness};
    const double share = change.blend / 255.0;
    const auto mixed = [&](double old, double offset) {
        const double value = old + (channelOf(wanted, offset) - old) * share;
        return std::clamp(static_cast<int>(std::lround(value * alpha)), 0, alpha);
    };
    return packPixel(alpha, mixed(r, 0), mixed(g, -2), mixed(b, 2));
}

} // namespace

Colourise Colourise::of(std::uint32_t colourRef)
{
    const Pixel p = opaquePixel(colourRef);
    const Hsl hsl = hslOf(redOf(p) / 255.0, greenOf(p) / 255.0, blueOf(p) / 255.0);
    return {static_cast<int>(std::lround(hsl.hue * 60)) % 360, static_cast<int>(std::lround(hsl.saturation * 255)),
            255};
}

void applyColourise(PixelView pixels, const Colourise& change)
{
    Pixel lastIn = 0;
    Pixel lastOut = 0;
    for (int y = 0; y < pixels.height; ++y) {
        for (Pixel* p = pixels.row(y); p != pixels.row(y) + pixels.width; ++p) {
            if (*p != lastIn) { // neighbours are often equal
                lastIn = *p;
                lastOut = colourised(*p, change);
            }
            *p = lastOut;
        }
    }
}

void applyShift(PixelView pixels, const ChannelShift& shift)
{
    for (int y = 0; y < pixels.height; ++y) {
        for (Pixel* p = pixels.row(y); p != pixels.row(y) + pixels.width; ++p) {
            const int alpha = alphaOf(*p);
            const auto moved = [alpha](int channel, int by) {
                const int share = div255(std::abs(by) * alpha);
                return std::clamp(by < 0 ? channel - share : channel + share, 0, alpha);
            };
            *p = packPixel(alpha, moved(redOf(*p), shift.red), moved(greenOf(*p), shift.green),
                           moved(blueOf(*p), shift.blue));
        }
    }
}

Surface withStraightAlpha(ConstPixelView pixels)
{
    Surface plain({pixels.width, pixels.height});
    for (int y = 0; y < plain.size().height; ++y) {
        std::transform(pixels.row(y), pixels.row(y) + pixels.width, plain.view().row(y), [](Pixel p) {
            const int a = alphaOf(p);
            const auto straight = [a](int c) { return a == 0 ? 0 : std::min(255, (c * 255 + a / 2) / a); };
            return packPixel(a, straight(redOf(p)), straight(greenOf(p)), straight(blueOf(p)));
        });
    }
    return plain;
}

} // namespace ambrel
