// Colours of the contract as pixels.
#pragma once

#include "ambrel/pixels/pixel.h"
#include "host/windows_headers.h"

namespace ambrel {

/// An automation colour, 0x00BBGGRR or a system colour, as an opaque pixel. Unknown kinds are black.
inline Pixel toPixel(OLE_COLOR colour) noexcept
{
    if ((colour & 0xFF000000u) == 0)
        return opaquePixel(colour);
    COLORREF plain = 0;
    return SUCCEEDED(OleTranslateColor(colour, nullptr, &plain)) ? opaquePixel(plain) : 0xFF000000u;
}

} // namespace ambrel
