// Image files as bitmaps, decoded by the platform's 2-D graphics library.
#pragma once

#include "frame/platform/handles.h"

namespace morvane {

/// The picture in a file, laid over an opaque background given as 0xAARRGGBB. Empty when the file cannot be read or
/// decoded.
UniqueBitmap loadFileBitmap(const wchar_t* path, COLORREF background);

} // namespace morvane
