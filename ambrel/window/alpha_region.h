// Window regions from pixels.
#pragma once

#include "ambrel/pixels/surface.h"
#include "frame/platform/handles.h"

#include <functional>

namespace ambrel {

/// The pixels of a size for which `belongs(x, y)` holds. Throws std::bad_alloc.
morvane::UniqueRegion regionWhere(int width, int height, const std::function<bool(int x, int y)>& belongs);

/// The pixels that are not wholly transparent.
morvane::UniqueRegion alphaRegion(const ConstPixelView& pixels);

} // namespace ambrel
