// Points on arcs for dials. Angles are degrees, clockwise from three o'clock, as the platform's 2-D graphics count
// them.
#pragma once

#include <optional>
#include <vector>

namespace ambrel {

struct ArcPoint {
    int x;
    int y;
    friend bool operator==(const ArcPoint&, const ArcPoint&) = default;
};

struct Arc {
    double centreX;
    double centreY;
    double radius; // pixels
    double startAngle;
    double endAngle; // below the start angle the arc runs counter-clockwise
    double rotation; // added to both
};

/// The corners of a line of chords that looks round: at most 720. Empty for an arc without extent or with a number that
/// is none.
std::vector<ArcPoint> arcPoints(const Arc& arc);

/// A tick reaches from the arc `length` pixels towards the centre.
struct ArcTick {
    ArcPoint outer;
    ArcPoint inner;
};

/// Ticks from the start angle on, `step` degrees apart, the end angle included when a tick falls on it. At most 720;
/// empty when the step is not above zero.
std::vector<ArcTick> arcTicks(const Arc& arc, double step, double length);

} // namespace ambrel
