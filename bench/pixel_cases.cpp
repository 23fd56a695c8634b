// How fast pixels move, beside the machine's limits: memory's bandwidth and a plain loop over the same pixels.
#include "ambrel/pixels/draw.h"
#include "ambrel/pixels/gradient.h"
#include "ambrel/pixels/nine_part.h"
#include "ambrel/render/image_base.h"
#include "ambrel/render/picture.h"
#include "bench/cases.h"
#include "bench/own_window.h"
#include "bench/plain_loops.h"
#include "bench/table.h"
#include "bench/window_pixels.h"
#include "frame/com/instance.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace bench {

namespace {

using ambrel::Canvas;
using ambrel::Surface;
using morvane::ComPtr;
using morvane::Instance;
using morvane::Rect;
using morvane::Size;

constexpr Size kButtonSize{128, 32};
constexpr double kHalfOfPlainLoop = 0.5;

Canvas canvasOf(Surface& surface)
{
    return {surface.view(), {}, surface.view().bounds()};
}
double pixelCount(Size size)
{
    return static_cast<double>(size.width) * size.height;
}

Surface filled(Size size, ambrel::Pixel value)
{
    Surface surface(size);
    ambrel::fillRect(canvasOf(surface), surface.view().bounds(), value);
    return surface;
}

void blendPlainly(Surface& out, const Surface& source)
{
    plainBlend(out.view().data, source.view().data, static_cast<std::size_t>(pixelCount(out.size())));
}

void checkSame(const Surface& a, const Surface& b, const char* what)
{
    const auto difference = [](std::uint32_t x, std::uint32_t y) {
        int most = 0;
        for (int shift = 0; shift < 32; shift += 8)
            most = std::max(most, std::abs(static_cast<int>(x >> shift & 255u) - static_cast<int>(y >> shift & 255u)));
        return most;
    };
    const auto count = static_cast<std::size_t>(pixelCount(a.size()));
    for (std::size_t i = 0; i < count; ++i)
        check(difference(a.view().data[i], b.view().data[i]) <= 1, what);
}

void blends(Bench& bench, Size size, const char* name)
{
    const Surface source = filled(size, 0x80402010u);
    Surface ours = filled(size, 0xFF808080u);
    Surface plain = filled(size, 0xFF808080u);
    const int times = std::max(1, static_cast<int>(2e6 / pixelCount(size)));
    const auto blendOurs = [&](int) { ambrel::blendImage(canvasOf(ours), {}, source.view()); };
    const auto blendPlain = [&](int) { blendPlainly(plain, source); };
    blendOurs(0);
    blendPlain(0);
    checkSame(ours, plain, "the two blends differ");
    Contender our = repeated(times, blendOurs);
    Contender other = repeated(times, blendPlain);
    our.operations *= pixelCount(size);
    other.operations *= pixelCount(size);
    row(name, bench.compare(our, other), kHalfOfPlainLoop);
}

void blendScreen(Bench& bench)
{
    blends(bench, kWindowSize, "blend 1600 x 1200 / plain SSE2 loop");
}
void blendButton(Bench& bench)
{
    blends(bench, kButtonSize, "blend 128 x 32 / plain SSE2 loop");
}

void copies(Bench& bench)
{
    const Surface source = filled(kWindowSize, 0xFF402010u);
    Surface ours = filled(kWindowSize, 0);
    Surface plain = filled(kWindowSize, 0);
    const double pixels = pixelCount(kWindowSize);
    const Contender copyOurs{pixels, [&] { ambrel::copyImage(canvasOf(ours), {}, source.view()); }};
    const Contender copyPlain{pixels, [&] {
                                  std::memcpy(plain.view().data, source.view().data,
                                              static_cast<std::size_t>(pixels) * sizeof(std::uint32_t));
                              }};
    row("copy 1600 x 1200 / memcpy", bench.compare(copyOurs, copyPlain), kHalfOfPlainLoop);
    checkSame(ours, plain, "the two copies differ");
}

/// A picture of a button's face, translucent so that every pixel has to be blended.
Surface face()
{
    Surface picture({24, 24});
    ambrel::fillGradient(canvasOf(picture), picture.view().bounds(), 0x80808080u, 0x80404040u, 90);
    return picture;
}

void compareSection(Bench& bench, Size size, const char* name)
{
    platform(); // pictures are decoded by a system component
    const auto picture = Instance<ambrel::Picture>::make();
    check(picture->loadFromMemory(ambrel::encodePng(face().view())), "the picture could not be read");
    const auto image = Instance<ambrel::ImageBase>::make();
    image->setPicture(picture.get());
    ambrel::ImageSection section;
    section.borders = {5, 5, 5, 5};
    image->setSection(section);

    Surface form(size);
    ambrel::drawNineParts(form.view(), picture->frame(ambrel::Scale(100)).pixels,
                          {section.borders, section.borders, {}});
    Surface ours = filled(size, 0xFF808080u);
    Surface plain = filled(size, 0xFF808080u);
    const auto drawOurs = [&](int) { image->draw(canvasOf(ours), ours.view().bounds(), 0, ambrel::Scale(100)); };
    const auto blendPlain = [&](int) { blendPlainly(plain, form); };
    drawOurs(0);
    blendPlain(0);
    checkSame(ours, plain, "the image section looks different from its nine parts");
    const int times = std::max(1, static_cast<int>(2e6 / pixelCount(size)));
    Contender our = repeated(times, drawOurs);
    Contender other = repeated(times, blendPlain);
    our.operations *= pixelCount(size);
    other.operations *= pixelCount(size);
    row(name, bench.compare(our, other), kHalfOfPlainLoop);
}

void sectionButton(Bench& bench)
{
    compareSection(bench, kButtonSize, "nine-part section 128 x 32 / the same");
}
void sectionScreen(Bench& bench)
{
    compareSection(bench, {1600, 1200}, "nine-part section 1600 x 1200 / the same");
}

/// A size that was not drawn before: the parts are put together first.
void sectionFresh(Bench& bench)
{
    const Surface picture = face();
    Surface ours(kButtonSize);
    Surface plain = filled(kButtonSize, 0xFF808080u);
    const Surface source = filled(kButtonSize, 0x80402010u);
    constexpr int kTimes = 500;
    Contender our = repeated(kTimes, [&](int) {
        ambrel::drawNineParts(ours.view(), picture.view(), {{5, 5, 5, 5}, {5, 5, 5, 5}, {}});
    });
    Contender other = repeated(kTimes, [&](int) { blendPlainly(plain, source); });
    our.operations *= pixelCount(kButtonSize);
    other.operations *= pixelCount(kButtonSize);
    row("nine parts put together, 128 x 32 / the same", bench.compare(our, other));
    check(ours.view().at(64, 16) != 0, "nothing was put together");
}

constexpr Case kCases[] = {
    {"pixels-copy", &copies},
    {"pixels-blend-screen", &blendScreen},
    {"pixels-blend-button", &blendButton},
    {"pixels-section-button", &sectionButton},
    {"pixels-section-screen", &sectionScreen},
    {"pixels-nine-parts", &sectionFresh},
};

} // namespace

std::span<const Case> pixelCases()
{
    return kCases;
}

} // namespace bench
