// The ring around the object that has the keyboard.
#pragma once

#include "ambrel/pixels/draw.h"
#include "ambrel/render/scale.h"
#include "host/windows_headers.h"

namespace ambrel {

inline constexpr OLE_COLOR kLightAccent = 0x00D96325; // #2563D9
inline constexpr OLE_COLOR kDarkAccent = 0x00FFA06E;  // #6EA0FF

/// A ring 2 wide at 100 percent, along the inside of the rectangle's edge, with the corner radius of controls. In the
/// accent colour of the light or of the dark palette, whichever stands out more from what is drawn there.
void drawFocusMark(const Canvas& canvas, const Rect& rect, Scale scale);

} // namespace ambrel
