// Linear gradients.
#pragma once

#include "ambrel/pixels/draw.h"

namespace ambrel {

/// Fills with a colour that runs from `start` to `end` in the given direction: 0 degrees is left to right, 90 top to
/// bottom, clockwise, any whole number. The run always spans the whole rectangle, corner to corner, however little of
/// it is visible. Colours are premultiplied; translucent ones are drawn over what is there.
void fillGradient(const Canvas& canvas, const Rect& rect, Pixel start, Pixel end, int angle);

} // namespace ambrel
