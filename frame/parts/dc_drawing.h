// Drawing on the device context of the framework's object-draw helper, for hosts that paint without a render device.
#pragma once

#include "frame/com/bstr.h"
#include "host/geometry.h"

namespace morvane {

class DcPainter {
public:
    /// The device context belongs to `objectDraw` and is valid for the present drawing call.
    explicit DcPainter(IVexObjectDraw& objectDraw);

    HDC dc() const { return m_dc; }

    void drawSection(IVexImageBase& section, const Rect& rect) const;
    void drawText(IVexTextStyle& style, const Bstr& text, const Rect& rect) const;
    void fillColor(OLE_COLOR color, const Rect& rect) const;
    void drawFill(IFillColor& fill, const Rect& rect) const;

    /// At their natural size in the top corner, the left one unless mirrored.
    void drawIcon(HICON icon, const Rect& control, bool isMirrored) const;
    /// Blended by its own alpha channel.
    void drawAlphaBitmap(HBITMAP bitmap, const Rect& control, bool isMirrored) const;
    /// The same, stretched into a rectangle.
    void drawAlphaBitmap(HBITMAP bitmap, const Rect& rect) const;

private:
    HDC m_dc = nullptr;
};

/// In pixels; empty for a handle that is no bitmap.
Size bitmapSize(HBITMAP bitmap);

} // namespace morvane
