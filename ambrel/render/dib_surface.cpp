#include "ambrel/render/dib_surface.h"

#include "host/geometry.h"

namespace ambrel {

BITMAPINFO bitmapInfoOf(Size size) noexcept
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

void repairAlpha(const Canvas& canvas)
{
    const Rect r = canvas.visible(canvas.clip);
    for (int y = r.top; y < r.bottom; ++y) {
        Pixel* row = canvas.at(r.left, y);
        for (int x = 0; x < r.width(); ++x)
            if (alphaOf(row[x]) == 0 && row[x] != 0)
                row[x] |= 0xFF000000u;
    }
}

DibSurface::DibSurface(Size size) noexcept
{
    if (size.isEmpty() || !Surface::isAllowed(size))
        return;
    const BITMAPINFO info = bitmapInfoOf(size);
    void* bits = nullptr;
    m_dc.reset(CreateCompatibleDC(nullptr));
    m_bitmap.reset(CreateDIBSection(m_dc.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!m_dc || !m_bitmap)
        return;
    m_formerBitmap = SelectObject(m_dc.get(), m_bitmap.get());
    SetBkMode(m_dc.get(), TRANSPARENT);
    m_pixels = {static_cast<Pixel*>(bits), size.width, size.height, size.width};
}

DibSurface::~DibSurface()
{
    if (m_formerBitmap)
        SelectObject(m_dc.get(), m_formerBitmap);
}

PixelView DibSurface::pixels() const noexcept
{
    GdiFlush();
    return m_pixels;
}

Canvas DibSurface::canvas(Point origin) const noexcept
{
    return {pixels(), origin, m_pixels.bounds().shifted(origin.x, origin.y)};
}

HBITMAP DibSurface::detachBitmap() noexcept
{
    GdiFlush();
    if (m_formerBitmap)
        SelectObject(m_dc.get(), std::exchange(m_formerBitmap, nullptr));
    m_pixels = {};
    return m_bitmap.detach();
}

namespace {

/// Only what the device context shows anyway is copied.
Rect shownPart(HDC dc, const Rect& rect) noexcept
{
    RECT box{};
    if (!dc || GetClipBox(dc, &box) == ERROR)
        return {};
    return rect.intersection(morvane::fromWin32(box));
}

} // namespace

BorrowedPixels::BorrowedPixels(HDC dc, const Rect& rect) noexcept
    : m_dc(dc), m_rect(shownPart(dc, rect)), m_copy(m_rect.size())
{
    if (!m_copy.isEmpty())
        BitBlt(m_copy.dc(), 0, 0, m_rect.width(), m_rect.height(), m_dc, m_rect.left, m_rect.top, SRCCOPY);
}

BorrowedPixels::~BorrowedPixels()
{
    if (!m_copy.isEmpty())
        BitBlt(m_dc, m_rect.left, m_rect.top, m_rect.width(), m_rect.height(), m_copy.dc(), 0, 0, SRCCOPY);
}

} // namespace ambrel
