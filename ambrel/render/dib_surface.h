// Pixels that GDI and our own loops share.
#pragma once

#include "ambrel/pixels/draw.h"
#include "frame/platform/handles.h"

namespace ambrel {

/// A top-down 32-bit bitmap section in a memory device context of its own. New pixels are transparent.
class DibSurface {
public:
    /// Empty when the size is zero, beyond what surfaces may have, or when the system refuses.
    explicit DibSurface(Size size) noexcept;
    DibSurface(const DibSurface&) = delete;
    DibSurface& operator=(const DibSurface&) = delete;
    ~DibSurface();

    bool isEmpty() const noexcept { return m_pixels.isEmpty(); }
    Size size() const noexcept { return {m_pixels.width, m_pixels.height}; }
    HDC dc() const noexcept { return m_dc.get(); }
    HBITMAP bitmap() const noexcept { return m_bitmap.get(); }

    /// Waits for GDI, so that what it drew is there.
    PixelView pixels() const noexcept;

    /// All of it, with its first pixel at `origin`.
    Canvas canvas(Point origin = {}) const noexcept;

    /// Gives the bitmap away; the surface is empty afterwards.
    HBITMAP detachBitmap() noexcept;

private:
    morvane::UniqueMemoryDc m_dc;
    morvane::UniqueBitmap m_bitmap;
    HGDIOBJ m_formerBitmap = nullptr;
    PixelView m_pixels;
};

/// Gives pixels that GDI drew their alpha, which it clears: colour without alpha can come from nowhere else.
void repairAlpha(const Canvas& canvas);

/// The description of a top-down 32-bit bitmap.
BITMAPINFO bitmapInfoOf(Size size) noexcept;

/// Lets our own loops draw on somebody's device context: holds a copy of a part of it, which goes back at the end of
/// the scope.
class BorrowedPixels {
public:
    BorrowedPixels(HDC dc, const Rect& rect) noexcept;
    BorrowedPixels(const BorrowedPixels&) = delete;
    BorrowedPixels& operator=(const BorrowedPixels&) = delete;
    ~BorrowedPixels();

    bool isEmpty() const noexcept { return m_copy.isEmpty(); }
    /// In the device context's coordinates.
    Canvas canvas() const noexcept { return m_copy.canvas(m_rect.topLeft()); }

private:
    HDC m_dc;
    Rect m_rect;
    DibSurface m_copy;
};

} // namespace ambrel
