#include "ambrel/pixels/gradient.h"

#include "ambrel/pixels/loops.h"

#include <array>
#include <cmath>
#include <cstring>
#include <numbers>

namespace ambrel {

namespace {

constexpr int kSteps = 1024;

Pixel between(Pixel a, Pixel b, int numerator, int denominator)
{
    const auto channel = [&](int from, int to) {
        const int sum = from * (denominator - numerator) + to * numerator;
        return (2 * sum + denominator) / (2 * denominator);
    };
    return packPixel(channel(alphaOf(a), alphaOf(b)), channel(redOf(a), redOf(b)), channel(greenOf(a), greenOf(b)),
                     channel(blueOf(a), blueOf(b)));
}

/// Where a pixel's centre lies on the gradient's run, as a fixed-point number of colour steps.
class Run {
public:
    Run(const Rect& rect, int angle)
    {
        const double radians = angle * std::numbers::pi / 180;
        const double cosine = std::cos(radians);
        const double sine = std::sin(radians);
        const double length = std::abs(cosine) * rect.width() + std::abs(sine) * rect.height();
        const double scale = (kSteps - 1) * kOne / length;
        m_stepX = std::llround(cosine * scale);
        m_stepY = std::llround(sine * scale);
        // The middle of the rectangle is the middle of the run.
        const double middle = (kSteps - 1) * kOne / 2.0;
        m_origin =
            std::llround(middle - ((rect.width() - 1) / 2.0 * cosine + (rect.height() - 1) / 2.0 * sine) * scale);
    }

    std::int64_t at(int x, int y) const { return m_origin + x * m_stepX + y * m_stepY; }
    std::int64_t stepX() const { return m_stepX; }

    static int index(std::int64_t position)
    {
        const std::int64_t i = (position + static_cast<std::int64_t>(kOne) / 2) >> 32;
        return static_cast<int>(i < 0 ? 0 : i >= kSteps ? kSteps - 1 : i);
    }

private:
    static constexpr double kOne = 4294967296.0;
    std::int64_t m_origin;
    std::int64_t m_stepX;
    std::int64_t m_stepY;
};

void blendRow(Pixel* out, const Pixel* source, int count, bool isOpaque)
{
    if (isOpaque)
        std::memcpy(out, source, static_cast<std::size_t>(count) * sizeof(Pixel));
    else
        loops().blend(out, source, static_cast<std::size_t>(count));
}

} // namespace

void fillGradient(const Canvas& canvas, const Rect& rect, Pixel start, Pixel end, int angle)
{
    const Rect shown = canvas.visible(rect);
    if (shown.isEmpty())
        return;
    if (start == end)
        return blendRect(canvas, shown, start);
    const int turned = ((angle % 360) + 360) % 360;
    const Run run(rect, turned);
    std::array<Pixel, kSteps> colours;
    for (int i = 0; i < kSteps; ++i)
        colours[i] = between(start, end, i, kSteps - 1);
    if (turned % 180 == 90) { // each row has one colour
        for (int y = shown.top; y < shown.bottom; ++y)
            blendRect(canvas, {shown.left, y, shown.right, y + 1}, colours[Run::index(run.at(0, y - rect.top))]);
        return;
    }
    const bool isOpaque = alphaOf(start) == 255 && alphaOf(end) == 255;
    constexpr int kChunk = 256; // pixels made at a time
    std::array<Pixel, kChunk> chunk;
    for (int left = shown.left; left < shown.right; left += kChunk) {
        const int count = std::min(kChunk, shown.right - left);
        for (int y = shown.top; y < shown.bottom; ++y) {
            if (turned % 180 != 0 || y == shown.top) { // a horizontal run is the same in every row
                std::int64_t position = run.at(left - rect.left, y - rect.top);
                for (int i = 0; i < count; ++i, position += run.stepX())
                    chunk[i] = colours[Run::index(position)];
            }
            blendRow(canvas.at(left, y), chunk.data(), count, isOpaque);
        }
    }
}

} // namespace ambrel
