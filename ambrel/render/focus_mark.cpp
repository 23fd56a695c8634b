#include "ambrel/render/focus_mark.h"

#include "ambrel/render/colours.h"

#include <cstdlib>

namespace ambrel {

namespace {

/// How light a colour looks, 0..255.
int lightnessOf(Pixel p)
{
    return (redOf(p) * 77 + greenOf(p) * 151 + blueOf(p) * 28) / 256;
}

/// The palette's accent that stands out more from what lies beneath.
OLE_COLOR accentOn(Pixel beneath)
{
    const auto distance = [&](OLE_COLOR accent) {
        return std::abs(lightnessOf(toPixel(accent)) - lightnessOf(beneath));
    };
    return distance(kLightAccent) >= distance(kDarkAccent) ? kLightAccent : kDarkAccent;
}

} // namespace

void drawFocusMark(const Canvas& canvas, const Rect& rect, Scale scale)
{
    constexpr int kWidth = 2;
    constexpr int kRadius = 4;
    const Rect shown = canvas.visible(rect);
    if (shown.isEmpty())
        return;
    // Always the same point, so that a part drawn later gets the colour of the rest.
    const Point probe{rect.left + scale(kWidth), rect.top + rect.height() / 2};
    const bool isInside = Rect::at(canvas.origin, {canvas.pixels.width, canvas.pixels.height}).contains(probe);
    const Pixel beneath = isInside ? *canvas.at(probe.x, probe.y) : 0;
    const OLE_COLOR accent = alphaOf(beneath) != 0 ? accentOn(beneath) : kLightAccent;
    drawRing(canvas, rect, scale(kRadius), scale(kWidth), toPixel(accent));
}

} // namespace ambrel
