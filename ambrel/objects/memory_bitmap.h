// Somebody's device context for tests, with pixels to look at.
#pragma once

#include "frame/platform/handles.h"

#include <algorithm>
#include <cstdint>

namespace ambrel::testing_objects {

using Pixel = std::uint32_t;

/// A bitmap with a device context, filled with one value.
class MemoryBitmap {
public:
    MemoryBitmap(int width, int height, Pixel value) : m_width(width)
    {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        m_dc.reset(CreateCompatibleDC(nullptr));
        m_bitmap.reset(CreateDIBSection(m_dc.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        m_former = SelectObject(m_dc.get(), m_bitmap.get());
        m_pixels = static_cast<Pixel*>(bits);
        std::fill_n(m_pixels, width * height, value);
    }
    MemoryBitmap(const MemoryBitmap&) = delete;
    MemoryBitmap& operator=(const MemoryBitmap&) = delete;
    ~MemoryBitmap() { SelectObject(m_dc.get(), m_former); }

    hyper dc() const { return reinterpret_cast<hyper>(m_dc.get()); }
    Pixel at(int x, int y) const
    {
        GdiFlush();
        return m_pixels[y * m_width + x];
    }

private:
    morvane::UniqueMemoryDc m_dc;
    morvane::UniqueBitmap m_bitmap;
    HGDIOBJ m_former = nullptr;
    Pixel* m_pixels = nullptr;
    int m_width;
};

/// A handle that is neither a device context nor a bitmap. Small numbers are no good for that: the system takes them
/// for handles as they come.
inline hyper brushHandle()
{
    return reinterpret_cast<hyper>(GetStockObject(WHITE_BRUSH));
}

} // namespace ambrel::testing_objects
