// How many million pixels a second the loops draw: pixels_bench
#include "ambrel/pixels/colour_change.h"
#include "ambrel/pixels/draw.h"
#include "ambrel/pixels/gradient.h"
#include "ambrel/pixels/loops.h"
#include "ambrel/pixels/nine_part.h"

#include <chrono>
#include <cstdio>
#include <functional>

namespace {

using namespace ambrel;

constexpr Size kScreen{800, 600};

void measure(const char* what, const std::function<void()>& draw)
{
    using Clock = std::chrono::steady_clock;
    draw();
    int rounds = 0;
    const auto start = Clock::now();
    std::chrono::duration<double> spent{};
    while (spent.count() < 0.3) {
        draw();
        ++rounds;
        spent = Clock::now() - start;
    }
    const double pixels = static_cast<double>(kScreen.width) * kScreen.height * rounds;
    std::printf("  %-34s %8.0f million pixels/s\n", what, pixels / spent.count() / 1e6);
}

void measureAll()
{
    Surface target(kScreen);
    Surface translucent(kScreen);
    Surface opaque(kScreen);
    const Rect all = target.view().bounds();
    const Canvas canvas{target.view(), {}, all};
    fillRect(canvas, all, 0xFF808080u);
    fillRect({translucent.view(), {}, all}, all, premultiplied(128, 200, 100, 50));
    fillRect({opaque.view(), {}, all}, all, 0xFF204060u);
    Surface button({64, 32});
    fillGradient({button.view(), {}, button.view().bounds()}, button.view().bounds(), 0xFFFF0000u, 0xFF0000FFu, 45);
    const NineParts parts{{4, 4, 4, 4}, {4, 4, 4, 4}, {}};

    measure("copy", [&] { copyImage(canvas, {}, opaque.view()); });
    measure("blend, every pixel translucent", [&] { blendImage(canvas, {}, translucent.view()); });
    measure("blend, every pixel opaque", [&] { blendImage(canvas, {}, opaque.view()); });
    measure("blend at half opacity", [&] { blendImage(canvas, {}, translucent.view(), 128); });
    measure("fill", [&] { fillRect(canvas, all, 0xFF112233u); });
    measure("fill with a translucent colour", [&] { blendRect(canvas, all, premultiplied(100, 1, 2, 3)); });
    measure("gradient, top to bottom", [&] { fillGradient(canvas, all, 0xFF000000u, 0xFFFFFFFFu, 90); });
    measure("gradient, left to right", [&] { fillGradient(canvas, all, 0xFF000000u, 0xFFFFFFFFu, 0); });
    measure("gradient at 30 degrees", [&] { fillGradient(canvas, all, 0xFF000000u, 0xFFFFFFFFu, 30); });
    measure("stretch smoothly", [&] { stretchImage(target.view(), button.view()); });
    measure("stretch to the nearest", [&] { stretchImage(target.view(), button.view(), StretchQuality::Nearest); });
    measure("nine parts", [&] { drawNineParts(target.view(), button.view(), parts); });
    measure("tile 64 x 32", [&] { tileImage(canvas, all, button.view()); });
}

} // namespace

int main()
{
    std::puts("fast loops");
    measureAll();
    std::puts("plain loops");
    const LoopsChoice choice(plainLoops());
    measureAll();
}
