#include "ambrel/window/desktop_place.h"

#include <algorithm>

namespace ambrel {

Rect keptInside(const Rect& place, const Rect& area) noexcept
{
    const int left = std::max(area.left, std::min(place.left, area.right - place.width()));
    const int top = std::max(area.top, std::min(place.top, area.bottom - place.height()));
    return Rect::at({left, top}, place.size());
}

Rect centredWithin(const Rect& around, Size size, const Rect& workArea) noexcept
{
    return keptInside(morvane::centredIn(around, size), workArea);
}

Rect placeOfTip(Size size, Point pointer, TipGaps gaps, const Rect& workArea) noexcept
{
    const Size shown{std::min(size.width, workArea.width()), std::min(size.height, workArea.height())};
    const bool fitsBelow = pointer.y + gaps.below + shown.height <= workArea.bottom;
    const int top = fitsBelow ? pointer.y + gaps.below : pointer.y - gaps.above - shown.height;
    return keptInside(Rect::at({pointer.x, top}, shown), workArea);
}

} // namespace ambrel
