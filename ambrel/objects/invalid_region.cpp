#include "ambrel/objects/invalid_region.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace ambrel {

using morvane::Rect;

namespace {

std::int64_t areaOf(const Rect& rect) noexcept
{
    return std::int64_t{rect.width()} * rect.height();
}

/// Pixels that painting the union costs beyond painting both.
std::int64_t wasteOfJoining(const Rect& a, const Rect& b) noexcept
{
    return areaOf(a.united(b)) - areaOf(a) - areaOf(b);
}

} // namespace

void InvalidRegion::add(const Rect& added) noexcept
{
    Rect rect = added;
    if (rect.isEmpty())
        return;
    // Joins whatever costs nothing to join; a grown rectangle may now swallow others.
    for (std::size_t i = 0; i < m_count;) {
        if (wasteOfJoining(m_rects[i], rect) > 0) {
            ++i;
            continue;
        }
        rect = rect.united(m_rects[i]);
        removeAt(i);
        i = 0;
    }
    m_rects[m_count++] = rect;
    if (m_count <= kMaxRects)
        return;

    std::size_t first = 0;
    std::size_t second = 1;
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    for (std::size_t i = 0; i < m_count; ++i) {
        for (std::size_t j = i + 1; j < m_count; ++j) {
            const std::int64_t waste = wasteOfJoining(m_rects[i], m_rects[j]);
            if (waste < least) {
                least = waste;
                first = i;
                second = j;
            }
        }
    }
    const Rect joined = m_rects[first].united(m_rects[second]);
    removeAt(second); // the later one first: removeAt moves the last into its place
    removeAt(first);
    add(joined);
}

bool InvalidRegion::covers(const Rect& rect) const noexcept
{
    return std::any_of(m_rects.begin(), m_rects.begin() + static_cast<std::ptrdiff_t>(m_count),
                       [&](const Rect& held) { return held.contains(rect); });
}

Rect InvalidRegion::bounds() const noexcept
{
    Rect all;
    for (const Rect& rect : rects())
        all = all.united(rect);
    return all;
}

void InvalidRegion::clip(const Rect& limits) noexcept
{
    for (std::size_t i = m_count; i-- > 0;) {
        m_rects[i] = m_rects[i].intersection(limits);
        if (m_rects[i].isEmpty())
            removeAt(i);
    }
}

void InvalidRegion::removeAt(std::size_t index) noexcept
{
    m_rects[index] = m_rects[--m_count];
}

} // namespace ambrel
