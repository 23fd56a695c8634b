#include "ambrel/pixels/stretch.h"

#include "ambrel/pixels/loops.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace ambrel {

namespace {

/// Along one axis: for each target pixel, which source pixels count and how much.
///     source  |    0    |    1    |    2    |
///     target  |  0  |  1  |  2  |  3  |  4  |
/// Only `count` target pixels from `begin` on are looked at; they count from 0.
class Filter {
public:
    Filter(int sourceLength, int targetLength, int begin, int count)
    {
        const double ratio = static_cast<double>(sourceLength) / targetLength;
        const double radius = std::max(1.0, ratio); // of a triangle around the target pixel's centre
        m_taps = std::min(sourceLength, static_cast<int>(std::ceil(radius)) * 2 + 1);
        m_firsts.reserve(static_cast<std::size_t>(count));
        m_weights.resize(static_cast<std::size_t>(count) * m_taps);
        std::vector<double> shares(static_cast<std::size_t>(m_taps));
        for (int i = 0; i < count; ++i) {
            const double centre = (begin + i + 0.5) * ratio - 0.5;
            const int wanted = static_cast<int>(std::floor(centre - radius)) + 1;
            const int first = std::clamp(wanted, 0, sourceLength - m_taps);
            std::ranges::fill(shares, 0.0);
            const int last = static_cast<int>(std::ceil(centre + radius)) - 1;
            for (int s = wanted; s <= last; ++s) // pixels beyond the edge count as the edge's
                shares[std::clamp(std::clamp(s, 0, sourceLength - 1) - first, 0, m_taps - 1)] +=
                    std::max(0.0, 1 - std::abs(s - centre) / radius);
            m_firsts.push_back(first);
            quantise(shares, m_weights.data() + static_cast<std::size_t>(i) * m_taps);
        }
    }

    int taps() const { return m_taps; }
    int first(int i) const { return m_firsts[i]; }
    const std::int16_t* weights(int i) const { return m_weights.data() + static_cast<std::size_t>(i) * m_taps; }

private:
    /// Whole weights whose sum is exactly one: the largest takes what rounding left.
    static void quantise(const std::vector<double>& shares, std::int16_t* weights)
    {
        double sum = 0;
        for (const double share : shares)
            sum += share;
        int left = kWeightOne;
        std::size_t largest = 0;
        for (std::size_t t = 0; t < shares.size(); ++t) {
            weights[t] = static_cast<std::int16_t>(std::lround(shares[t] / sum * kWeightOne));
            left -= weights[t];
            if (weights[t] > weights[largest])
                largest = t;
        }
        weights[largest] = static_cast<std::int16_t>(weights[largest] + left);
    }

    int m_taps;
    std::vector<int> m_firsts;
    std::vector<std::int16_t> m_weights;
};

void stretchRow(Pixel* out, const Pixel* source, const Filter& filter, int count)
{
    const RowLoops& run = loops();
    for (int x = 0; x < count; ++x)
        out[x] = run.mixNeighbours(source + filter.first(x), filter.weights(x), filter.taps());
}

/// Horizontally first, row by row as they are needed; rows that several target rows use are kept.
void stretchSmooth(PixelView target, ConstPixelView source, Size whole, Point at)
{
    const Filter across(source.width, whole.width, at.x, target.width);
    const Filter down(source.height, whole.height, at.y, target.height);
    const int taps = down.taps();
    std::vector<Pixel> kept(static_cast<std::size_t>(taps) * target.width);
    std::vector<int> keptRow(static_cast<std::size_t>(taps), -1);
    std::vector<const Pixel*> rows(static_cast<std::size_t>(taps));
    for (int y = 0; y < target.height; ++y) {
        for (int t = 0; t < taps; ++t) {
            const int sourceRow = down.first(y) + t;
            const int slot = sourceRow % taps;
            Pixel* row = kept.data() + static_cast<std::size_t>(slot) * target.width;
            if (keptRow[slot] != sourceRow) {
                if (source.width == whole.width)
                    std::memcpy(row, source.row(sourceRow) + at.x,
                                static_cast<std::size_t>(target.width) * sizeof(Pixel));
                else
                    stretchRow(row, source.row(sourceRow), across, target.width);
                keptRow[slot] = sourceRow;
            }
            rows[t] = row;
        }
        loops().mixRows(target.row(y), rows.data(), down.weights(y), taps, static_cast<std::size_t>(target.width));
    }
}

void stretchNearest(PixelView target, ConstPixelView source)
{
    std::vector<int> columns(static_cast<std::size_t>(target.width));
    for (int x = 0; x < target.width; ++x)
        columns[x] = static_cast<int>((2 * static_cast<std::int64_t>(x) + 1) * source.width / (2 * target.width));
    for (int y = 0; y < target.height; ++y) {
        const auto sourceRow = (2 * static_cast<std::int64_t>(y) + 1) * source.height / (2 * target.height);
        const Pixel* from = source.row(static_cast<int>(sourceRow));
        Pixel* out = target.row(y);
        for (int x = 0; x < target.width; ++x)
            out[x] = from[columns[x]];
    }
}

void copyRows(PixelView target, ConstPixelView source)
{
    for (int y = 0; y < target.height; ++y)
        std::memmove(target.row(y), source.row(y), static_cast<std::size_t>(target.width) * sizeof(Pixel));
}

} // namespace

void stretchImage(PixelView target, ConstPixelView source, StretchQuality quality)
{
    if (target.isEmpty())
        return;
    if (source.isEmpty()) {
        for (int y = 0; y < target.height; ++y)
            loops().fill(target.row(y), static_cast<std::size_t>(target.width), 0);
    } else if (source.width == target.width && source.height == target.height) {
        copyRows(target, source);
    } else if (quality == StretchQuality::Nearest) {
        stretchNearest(target, source);
    } else {
        stretchSmooth(target, source, {target.width, target.height}, {});
    }
}

void stretchImagePart(PixelView part, ConstPixelView source, Size whole, Point at)
{
    if (source.isEmpty())
        stretchImage(part, source);
    else if (!part.isEmpty())
        stretchSmooth(part, source, whole, at);
}

} // namespace ambrel
