#include "ambrel/render/focus_mark.h"

#include "ambrel/render/colours.h"

namespace ambrel {

void drawFocusMark(const Canvas& canvas, const Rect& rect, Scale scale, OLE_COLOR accent)
{
    constexpr int kWidth = 2;
    constexpr int kRadius = 4;
    drawRing(canvas, rect, scale(kRadius), scale(kWidth), toPixel(accent));
}

} // namespace ambrel
