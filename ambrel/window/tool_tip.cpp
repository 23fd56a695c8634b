#include "ambrel/window/tool_tip.h"

#include "ambrel/window/desktop_place.h"
#include "ambrel/window/window_class.h"
#include "host/geometry.h"

#include <utility>

namespace ambrel {

namespace {

// The look of the default skins; sizes at 96 dots per inch.
constexpr COLORREF kSurface = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kLine = RGB(0xC9, 0xCE, 0xD6);
constexpr COLORREF kText = RGB(0x1A, 0x1E, 0x24);
constexpr int kPaddingX = 8;
constexpr int kPaddingY = 6;
constexpr int kCorner = 4;
constexpr int kBelowPointer = 20;
constexpr int kAbovePointer = 4;
constexpr int kWidest = 400;
// Words that are wider than the tip are broken anywhere.
constexpr UINT kTextFormat = DT_LEFT | DT_NOPREFIX | DT_WORDBREAK | DT_EDITCONTROL | DT_EXPANDTABS;

int scaled(int value, int dpi) noexcept
{
    return MulDiv(value, dpi, 96);
}

/// The part of the pointer's monitor that windows may cover.
RECT workArea(POINT pointer) noexcept
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (GetMonitorInfoW(MonitorFromPoint(pointer, MONITOR_DEFAULTTONEAREST), &monitor))
        return monitor.rcWork;
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

Rect placeFor(SIZE size, int dpi) noexcept
{
    POINT pointer{};
    GetCursorPos(&pointer);
    return placeOfTip({static_cast<int>(size.cx), static_cast<int>(size.cy)},
                      {static_cast<int>(pointer.x), static_cast<int>(pointer.y)},
                      {scaled(kBelowPointer, dpi), scaled(kAbovePointer, dpi)}, morvane::fromWin32(workArea(pointer)));
}

} // namespace

WindowClass& ToolTip::windowClass() noexcept
{
    static WindowClass instance(L"AmbrelToolTip", CS_SAVEBITS | CS_DROPSHADOW, &procedure);
    return instance;
}

void ToolTip::offer(HWND owner, std::uint64_t object, std::wstring text, std::int64_t nowMs)
{
    m_owner = owner;
    const bool changes = m_timing.isShown() && text != m_timing.text();
    m_timing.offer(object, std::move(text), nowMs);
    update(nowMs);
    if (!m_timing.isShown())
        close();
    else if (changes)
        show();
}

void ToolTip::dismiss(std::int64_t nowMs) noexcept
{
    m_timing.dismiss(nowMs);
    close();
}

void ToolTip::update(std::int64_t nowMs) noexcept
{
    if (!m_timing.update(nowMs))
        return;
    if (m_timing.isShown())
        show();
    else
        close();
}

void ToolTip::setDpi(int dpi) noexcept
{
    if (dpi != m_dpi)
        m_font.reset();
    m_dpi = dpi;
}

bool ToolTip::createWindow() noexcept
{
    if (m_window)
        return true;
    if (!windowClass().acquire())
        return false;
    m_holdsClass = true;
    const HWND window =
        CreateWindowExW(WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TRANSPARENT, windowClass().name(),
                        L"", WS_POPUP, 0, 0, 0, 0, m_owner, nullptr, morvane::thisModule(), this);
    if (!window) {
        releaseClass();
        return false;
    }
    m_window.reset(window);
    return true;
}

void ToolTip::releaseClass() noexcept
{
    if (std::exchange(m_holdsClass, false))
        windowClass().release();
}

void ToolTip::show() noexcept
{
    if (!createWindow())
        return;
    if (!m_font) {
        NONCLIENTMETRICSW metrics{};
        metrics.cbSize = sizeof metrics;
        SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        metrics.lfStatusFont.lfHeight = -scaled(12, m_dpi);
        m_font.reset(CreateFontIndirectW(&metrics.lfStatusFont));
    }
    const HWND window = m_window.get();
    const Rect place = placeFor(measure(), m_dpi);
    const int width = place.width();
    const int height = place.height();
    const int corner = scaled(kCorner, m_dpi) * 2;
    morvane::UniqueRegion outline(CreateRoundRectRgn(0, 0, width + 1, height + 1, corner, corner));
    if (SetWindowRgn(window, outline.get(), FALSE))
        outline.detach(); // the system's now
    SetWindowPos(window, HWND_TOPMOST, place.left, place.top, width, height, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

SIZE ToolTip::measure() const noexcept
{
    const morvane::WindowDc dc(m_window.get()); // given back before the window is painted, which takes another one
    const morvane::SelectedObject font(dc.get(), m_font.get());
    RECT text{0, 0, scaled(kWidest, m_dpi), 0};
    DrawTextW(dc.get(), m_timing.text().c_str(), static_cast<int>(m_timing.text().size()), &text,
              kTextFormat | DT_CALCRECT);
    return {text.right + 2 * scaled(kPaddingX, m_dpi), text.bottom + 2 * scaled(kPaddingY, m_dpi)};
}

void ToolTip::draw(HDC dc) const noexcept
{
    RECT client{};
    GetClientRect(m_window.get(), &client);
    const morvane::UniqueBrush surface(CreateSolidBrush(kSurface));
    const morvane::UniquePen line(CreatePen(PS_SOLID, 1, kLine));
    const morvane::SelectedObject font(dc, m_font.get());
    const morvane::SelectedObject brush(dc, surface.get());
    const morvane::SelectedObject pen(dc, line.get());
    const int corner = scaled(kCorner, m_dpi) * 2;
    RoundRect(dc, 0, 0, client.right, client.bottom, corner, corner);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, kText);
    RECT text{scaled(kPaddingX, m_dpi), scaled(kPaddingY, m_dpi), client.right - scaled(kPaddingX, m_dpi),
              client.bottom};
    // A last letter may reach a pixel beyond its measured width.
    DrawTextW(dc, m_timing.text().c_str(), static_cast<int>(m_timing.text().size()), &text, kTextFormat | DT_NOCLIP);
}

LRESULT CALLBACK ToolTip::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_NCCREATE)
        SetWindowLongPtrW(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* self = reinterpret_cast<ToolTip*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_PAINT && self) {
        PAINTSTRUCT paint{};
        if (const HDC dc = BeginPaint(window, &paint)) {
            self->draw(dc);
            EndPaint(window, &paint);
        }
        return 0;
    }
    if (message == WM_NCHITTEST)
        return HTTRANSPARENT;
    if (message == WM_NCDESTROY && self) {
        self->m_window.detach(); // also when its owner window took it along
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        const LRESULT result = DefWindowProcW(window, message, wParam, lParam);
        self->releaseClass();
        return result;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace ambrel
