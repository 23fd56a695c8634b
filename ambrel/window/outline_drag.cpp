#include "ambrel/window/outline_drag.h"

#include "ambrel/render/focus_mark.h"
#include "ambrel/window/window_class.h"

#include <algorithm>

namespace ambrel {

namespace {

constexpr int kFrameWidth = 3; // at 96 dots per inch

/// The frame of a rectangle of this size: what lies inside of it belongs to the windows beneath.
morvane::UniqueRegion frameRegion(Size size, int width)
{
    morvane::UniqueRegion frame(CreateRectRgn(0, 0, size.width, size.height));
    const morvane::UniqueRegion inside(
        CreateRectRgn(width, width, std::max(width, size.width - width), std::max(width, size.height - width)));
    CombineRgn(frame.get(), frame.get(), inside.get(), RGN_DIFF);
    return frame;
}

} // namespace

WindowClass& OutlineDrag::windowClass() noexcept
{
    static WindowClass instance(L"AmbrelOutline", 0, &procedure);
    return instance;
}

LRESULT CALLBACK OutlineDrag::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_NCHITTEST)
        return HTTRANSPARENT;
    if (message == WM_PAINT) {
        PAINTSTRUCT paint{};
        if (const HDC dc = BeginPaint(window, &paint)) {
            const morvane::UniqueBrush accent(CreateSolidBrush(kLightAccent));
            FillRect(dc, &paint.rcPaint, accent.get());
            EndPaint(window, &paint);
        }
        return 0;
    }
    const LRESULT result = DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_NCDESTROY)
        windowClass().release();
    return result;
}

bool OutlineDrag::createWindow() noexcept
{
    if (m_window)
        return true;
    if (!windowClass().acquire())
        return false;
    m_window.reset(CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TRANSPARENT,
                                   windowClass().name(), L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                   morvane::thisModule(), nullptr));
    if (!m_window)
        windowClass().release();
    return static_cast<bool>(m_window);
}

void OutlineDrag::begin(const Rect& window, DragEdges edges, Point pointer, const SizeLimits& limits, int dpi) noexcept
{
    m_isRunning = true;
    m_start = window;
    m_edges = edges;
    m_from = pointer;
    m_limits = limits;
    m_width = MulDiv(kFrameWidth, dpi, 96);
    show(window);
}

void OutlineDrag::show(const Rect& place) noexcept
{
    const bool resized = !m_window || place.size() != m_place.size();
    m_place = place;
    if (!createWindow())
        return;
    if (resized) {
        morvane::UniqueRegion frame = frameRegion(place.size(), m_width);
        if (SetWindowRgn(m_window.get(), frame.get(), TRUE))
            frame.detach(); // the system's now
    }
    SetWindowPos(m_window.get(), HWND_TOPMOST, place.left, place.top, place.width(), place.height(),
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(m_window.get());
}

void OutlineDrag::end() noexcept
{
    m_isRunning = false;
    m_window.reset();
}

} // namespace ambrel
