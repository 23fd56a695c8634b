#include "ambrel/window/drag_geometry.h"

#include <algorithm>

namespace ambrel {

namespace {

/// One direction: the edges that follow, and how long the side may be.
void drag(int& nearEdge, int& farEdge, bool nearFollows, bool farFollows, int by, int least, int most) noexcept
{
    const int length = morvane::saturatingSubtract(farEdge, nearEdge);
    const int wanted = nearFollows ? morvane::saturatingSubtract(length, by) : morvane::saturatingAdd(length, by);
    const int allowed = std::max(least, std::min(wanted, most));
    if (nearFollows)
        nearEdge = morvane::saturatingSubtract(farEdge, allowed);
    else if (farFollows)
        farEdge = morvane::saturatingAdd(nearEdge, allowed);
}

} // namespace

Rect draggedPlace(const Rect& start, DragEdges edges, Point by, const SizeLimits& limits) noexcept
{
    if (!edges.any())
        return start.shifted(by.x, by.y);
    Rect place = start;
    drag(place.left, place.right, edges.left, edges.right, by.x, limits.least.width, limits.most.width);
    drag(place.top, place.bottom, edges.top, edges.bottom, by.y, limits.least.height, limits.most.height);
    return place;
}

} // namespace ambrel
