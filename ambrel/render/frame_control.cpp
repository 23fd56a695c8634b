#include "ambrel/render/frame_control.h"

#include "host/windows_headers.h"

#include <algorithm>

namespace ambrel {

namespace {

// The light palette of the default skins: raised, pressed and hot surfaces, lines, marks.
constexpr Pixel kRaised = 0xFFFDFDFE;
constexpr Pixel kHot = 0xFFEDF3FD;
constexpr Pixel kPressed = 0xFFDCE7FC;
constexpr Pixel kLine = 0xFFC9CED6;
constexpr Pixel kMark = 0xFF59626E;
constexpr Pixel kFaintMark = 0xFFB4BBC5;

Pixel surfaceOf(unsigned state)
{
    if ((state & DFCS_PUSHED) != 0)
        return kPressed;
    return (state & DFCS_HOT) != 0 ? kHot : kRaised;
}

/// A triangle of `rows` rows that grows by two pixels a row, pointing the way the state says.
void drawArrow(const Canvas& canvas, const Rect& rect, unsigned direction, int rows, Pixel colour)
{
    const bool isVertical = direction == DFCS_SCROLLUP || direction == DFCS_SCROLLDOWN;
    const bool growsForward = direction == DFCS_SCROLLUP || direction == DFCS_SCROLLLEFT;
    const Size size = isVertical ? Size{2 * rows - 1, rows} : Size{rows, 2 * rows - 1};
    const Rect box = morvane::centredIn(rect, size);
    for (int i = 0; i < rows; ++i) {
        const int half = growsForward ? i : rows - 1 - i;
        const Rect row = isVertical ? Rect::at({box.left + rows - 1 - half, box.top + i}, {2 * half + 1, 1})
                                    : Rect::at({box.left + i, box.top + rows - 1 - half}, {1, 2 * half + 1});
        blendRect(canvas, row, colour);
    }
}

} // namespace

bool drawFrameControl(const Canvas& canvas, const Rect& rect, unsigned type, unsigned state, Scale scale)
{
    constexpr unsigned kKind = 0x1F;
    const bool isArrow = type == DFC_SCROLL && (state & kKind) <= DFCS_SCROLLRIGHT;
    const bool isButton = type == DFC_BUTTON && (state & kKind) == DFCS_BUTTONPUSH;
    if (!isArrow && !isButton)
        return false;
    const int border = std::max(1, scale(1));
    fillRect(canvas, rect.inflated(-border), surfaceOf(state));
    drawRing(canvas, rect, isButton ? scale(3) : 0, border, kLine);
    if (isArrow) {
        const int room = std::min(rect.width(), rect.height());
        const Pixel colour = (state & DFCS_INACTIVE) != 0 ? kFaintMark : kMark;
        drawArrow(canvas, rect, state & kKind, std::clamp(room / 4, 1, scale(5)), colour);
    }
    return true;
}

} // namespace ambrel
