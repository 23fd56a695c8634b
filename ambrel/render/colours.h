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

/// The same as 0x00BBGGRR; of other kinds than system colours the high byte is ignored.
inline OLE_COLOR toPlainColour(OLE_COLOR colour) noexcept
{
    constexpr OLE_COLOR kSystem = 0x80;
    const Pixel p = colour >> 24 == kSystem ? toPixel(colour) : opaquePixel(colour);
    return static_cast<OLE_COLOR>(redOf(p) | greenOf(p) << 8 | blueOf(p) << 16);
}

} // namespace ambrel
