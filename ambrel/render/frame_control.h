// Buttons and scroll arrows for controls whose skin has no picture of them.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/scale.h"

namespace ambrel {

/// Draws what the system's DFC_ and DFCS_ constants name, flat and in our own colours. False for the kinds that are
/// left to the system.
bool drawFrameControl(const Canvas& canvas, const Rect& rect, unsigned type, unsigned state, Scale scale);

} // namespace ambrel
