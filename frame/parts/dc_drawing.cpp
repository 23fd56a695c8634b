#include "frame/parts/dc_drawing.h"

#include "frame/platform/handles.h"

namespace morvane {

namespace {

constexpr long kStyleFormat = -1; // the style's own drawing flags

Size iconSize(HICON icon)
{
    ICONINFO info{};
    if (!GetIconInfo(icon, &info))
        return {};
    const UniqueBitmap mask(info.hbmMask);
    const UniqueBitmap color(info.hbmColor);
    const Size size = bitmapSize(color ? color.get() : mask.get());
    return color ? size : Size{size.width, size.height / 2}; // a monochrome icon stacks its two masks
}

Rect topCorner(const Rect& control, Size size, bool isMirrored)
{
    return Rect::at({isMirrored ? control.right - size.width : control.left, control.top}, size);
}

} // namespace

Size bitmapSize(HBITMAP bitmap)
{
    BITMAP header{};
    if (!bitmap || GetObjectW(bitmap, sizeof header, &header) == 0)
        return {};
    return {static_cast<int>(header.bmWidth), static_cast<int>(header.bmHeight)};
}

DcPainter::DcPainter(IVexObjectDraw& objectDraw)
{
    std::int64_t dc = 0;
    objectDraw.GetDC(VARIANT_FALSE, &dc);
    m_dc = reinterpret_cast<HDC>(dc);
}

void DcPainter::drawSection(IVexImageBase& section, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    section.Draw(reinterpret_cast<std::int64_t>(m_dc), toSkinRect(rect), &drawn);
}

void DcPainter::drawText(IVexTextStyle& style, const Bstr& text, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    style.DrawText(reinterpret_cast<std::int64_t>(m_dc), text.get(), toSkinRect(rect), VARIANT_FALSE, kStyleFormat,
                   nullptr, &drawn);
}

void DcPainter::fillColor(OLE_COLOR color, const Rect& rect) const
{
    COLORREF value = 0;
    if (FAILED(OleTranslateColor(color, nullptr, &value)))
        return;
    const UniqueBrush brush(CreateSolidBrush(value));
    const RECT target = toWin32(rect);
    FillRect(m_dc, &target, brush.get());
}

void DcPainter::drawFill(IFillColor& fill, const Rect& rect) const
{
    VARIANT_BOOL drawn = VARIANT_FALSE;
    fill.Draw(reinterpret_cast<std::int64_t>(m_dc), toSkinRect(rect), &drawn);
}

void DcPainter::drawIcon(HICON icon, const Rect& control, bool isMirrored) const
{
    const Rect place = topCorner(control, iconSize(icon), isMirrored);
    DrawIconEx(m_dc, place.left, place.top, icon, place.width(), place.height(), 0, nullptr, DI_NORMAL);
}

void DcPainter::drawAlphaBitmap(HBITMAP bitmap, const Rect& control, bool isMirrored) const
{
    drawAlphaBitmap(bitmap, topCorner(control, bitmapSize(bitmap), isMirrored));
}

void DcPainter::drawAlphaBitmap(HBITMAP bitmap, const Rect& rect) const
{
    const Size size = bitmapSize(bitmap);
    if (size.isEmpty() || rect.isEmpty())
        return;
    const UniqueMemoryDc memory(CreateCompatibleDC(m_dc));
    const SelectedObject selected(memory.get(), bitmap);
    AlphaBlend(m_dc, rect.left, rect.top, rect.width(), rect.height(), memory.get(), 0, 0, size.width, size.height,
               {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA});
}

} // namespace morvane
