#include "ambrel/properties/arc_geometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ambrel {

namespace {

constexpr int kMostPoints = 720;
constexpr double kLargest = 30000; // what a render context's 16-bit coordinates can hold

bool isDrawable(const Arc& arc) noexcept
{
    // Comparisons are false for numbers that are none.
    return std::abs(arc.centreX) < kLargest && std::abs(arc.centreY) < kLargest && arc.radius > 0 &&
           arc.radius < kLargest && std::abs(arc.startAngle) < kLargest && std::abs(arc.endAngle) < kLargest &&
           std::abs(arc.rotation) < kLargest;
}

ArcPoint pointAt(const Arc& arc, double angle, double radius) noexcept
{
    const double radians = (angle + arc.rotation) * std::numbers::pi / 180;
    return {static_cast<int>(std::lround(arc.centreX + radius * std::cos(radians))),
            static_cast<int>(std::lround(arc.centreY + radius * std::sin(radians)))};
}

} // namespace

std::vector<ArcPoint> arcPoints(const Arc& arc)
{
    std::vector<ArcPoint> points;
    if (!isDrawable(arc) || arc.startAngle == arc.endAngle)
        return points;
    constexpr double kChordPixels = 4;
    const double sweep = std::clamp(arc.endAngle - arc.startAngle, -360.0, 360.0);
    const double length = std::abs(sweep) * std::numbers::pi / 180 * arc.radius;
    const int chords = std::clamp(static_cast<int>(std::ceil(length / kChordPixels)), 1, kMostPoints - 1);
    for (int i = 0; i <= chords; ++i)
        points.push_back(pointAt(arc, arc.startAngle + sweep * i / chords, arc.radius));
    return points;
}

std::vector<ArcTick> arcTicks(const Arc& arc, double step, double length)
{
    std::vector<ArcTick> ticks;
    if (!isDrawable(arc) || !(step > 0) || !(std::abs(length) < kLargest))
        return ticks;
    const double sweep = arc.endAngle - arc.startAngle;
    constexpr double kRounding = 1e-6; // a tick that falls on the end angle is not lost to rounding
    const double count = std::floor(std::abs(sweep) / step + kRounding) + 1;
    const double direction = sweep < 0 ? -1 : 1;
    for (int i = 0; i < std::min<double>(count, kMostPoints); ++i) {
        const double angle = arc.startAngle + direction * step * i;
        ticks.push_back({pointAt(arc, angle, arc.radius), pointAt(arc, angle, arc.radius - length)});
    }
    return ticks;
}

} // namespace ambrel
