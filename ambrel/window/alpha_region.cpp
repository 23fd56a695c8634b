#include "ambrel/window/alpha_region.h"

#include <cstring>
#include <vector>

namespace ambrel {

using morvane::UniqueRegion;

UniqueRegion regionWhere(int width, int height, const std::function<bool(int x, int y)>& belongs)
{
    // Runs of a row become rectangles; one call makes the region of all of them.
    std::vector<RECT> runs;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (!belongs(x, y))
                continue;
            const int start = x;
            while (x < width && belongs(x, y))
                ++x;
            runs.push_back({start, y, x, y + 1});
        }
    }
    if (runs.empty())
        return UniqueRegion(CreateRectRgn(0, 0, 0, 0));
    const std::size_t bytes = runs.size() * sizeof(RECT);
    std::vector<unsigned char> data(sizeof(RGNDATAHEADER) + bytes);
    RGNDATAHEADER header{};
    header.dwSize = sizeof header;
    header.iType = RDH_RECTANGLES;
    header.nCount = static_cast<DWORD>(runs.size());
    header.nRgnSize = static_cast<DWORD>(bytes);
    header.rcBound = {0, 0, width, height};
    std::memcpy(data.data(), &header, sizeof header);
    std::memcpy(data.data() + sizeof header, runs.data(), bytes);
    return UniqueRegion(
        ExtCreateRegion(nullptr, static_cast<DWORD>(data.size()), reinterpret_cast<const RGNDATA*>(data.data())));
}

UniqueRegion alphaRegion(const ConstPixelView& pixels)
{
    return regionWhere(pixels.width, pixels.height, [&](int x, int y) { return (pixels.row(y)[x] >> 24) != 0; });
}

} // namespace ambrel
