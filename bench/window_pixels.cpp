#include "bench/window_pixels.h"

#include "frame/platform/handles.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace bench {

namespace {

constexpr COLORREF kScribble = RGB(255, 0, 254);
constexpr std::uint32_t kScribbledPixel = 0xFF00FE;

} // namespace

ButtonGrid::ButtonGrid(int count) : m_columns(static_cast<int>(std::ceil(std::sqrt(count * 4.0 / 3.0))))
{
    const int rows = (count + m_columns - 1) / m_columns;
    m_cell = {kWindowSize.width / m_columns, kWindowSize.height / rows};
}

morvane::Rect ButtonGrid::place(int index) const
{
    const morvane::Point corner{index % m_columns * m_cell.width, index / m_columns * m_cell.height};
    return morvane::Rect::at(corner, {m_cell.width - 2, std::min(m_cell.height - 2, 28)});
}

std::vector<std::uint32_t> pixelsOf(HWND window, const morvane::Rect& part)
{
    BITMAPINFO format{};
    format.bmiHeader = {sizeof(BITMAPINFOHEADER), part.width(), -part.height(), 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(part.width()) * static_cast<std::size_t>(part.height()));
    const morvane::WindowDc screen(window);
    void* bits = nullptr;
    const morvane::UniqueBitmap bitmap(CreateDIBSection(screen.get(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    const morvane::UniqueMemoryDc memory(CreateCompatibleDC(screen.get()));
    const HGDIOBJ former = SelectObject(memory.get(), bitmap.get());
    BitBlt(memory.get(), 0, 0, part.width(), part.height(), screen.get(), part.left, part.top, SRCCOPY);
    GdiFlush();
    if (bits)
        std::transform(static_cast<const std::uint32_t*>(bits), static_cast<const std::uint32_t*>(bits) + pixels.size(),
                       pixels.begin(), [](std::uint32_t pixel) { return pixel & 0xFFFFFFu; });
    SelectObject(memory.get(), former);
    return pixels;
}

void scribble(HWND window, const morvane::Rect& part)
{
    // With children drawn over as well, since a native button is a window of its own.
    const HDC dc = GetDCEx(window, nullptr, DCX_CACHE);
    const morvane::UniqueBrush brush(CreateSolidBrush(kScribble));
    const RECT rect{part.left, part.top, part.right, part.bottom};
    FillRect(dc, &rect, brush.get());
    ReleaseDC(window, dc);
    GdiFlush();
}

std::size_t scribbledPixels(HWND window, const morvane::Rect& part)
{
    const auto pixels = pixelsOf(window, part);
    return static_cast<std::size_t>(std::count(pixels.begin(), pixels.end(), kScribbledPixel));
}

std::size_t coloursIn(HWND window, const morvane::Rect& part)
{
    const auto pixels = pixelsOf(window, part);
    return std::set<std::uint32_t>(pixels.begin(), pixels.end()).size();
}

std::uint64_t checksum(HWND window, const morvane::Rect& part)
{
    std::uint64_t sum = 14695981039346656037ull;
    for (const std::uint32_t pixel : pixelsOf(window, part))
        sum = (sum ^ pixel) * 1099511628211ull;
    return sum;
}

void bringToTop(HWND window)
{
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    RedrawWindow(window, nullptr, nullptr, RDW_ALLCHILDREN | RDW_UPDATENOW);
    pumpMessages();
}

void pumpMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace bench
