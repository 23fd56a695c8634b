// Windows that are moved and sized by an outline, because they take long to paint or are told so.
#include "ambrel/window/window_core.h"
#include "host/geometry.h"

#include <algorithm>
#include <windowsx.h>

namespace ambrel {

namespace {

/// The low bits of the system commands SC_MOVE and SC_SIZE say what the pointer holds; none when the keyboard asks.
constexpr WPARAM kHeldBits = 0x000F;

constexpr DragEdges edgesOf(WPARAM held) noexcept
{
    const bool left = held == WMSZ_LEFT || held == WMSZ_TOPLEFT || held == WMSZ_BOTTOMLEFT;
    const bool right = held == WMSZ_RIGHT || held == WMSZ_TOPRIGHT || held == WMSZ_BOTTOMRIGHT;
    const bool top = held == WMSZ_TOP || held == WMSZ_TOPLEFT || held == WMSZ_TOPRIGHT;
    const bool bottom = held == WMSZ_BOTTOM || held == WMSZ_BOTTOMLEFT || held == WMSZ_BOTTOMRIGHT;
    return {left, top, right, bottom};
}

WPARAM heldBy(DragEdges edges) noexcept
{
    const WPARAM vertical = edges.top ? WMSZ_TOP : edges.bottom ? WMSZ_BOTTOM : 0;
    const WPARAM horizontal = edges.left ? WMSZ_LEFT : edges.right ? WMSZ_RIGHT : 0;
    return vertical + horizontal;
}

Rect placeOf(HWND window) noexcept
{
    RECT place{};
    GetWindowRect(window, &place);
    return morvane::fromWin32(place);
}

} // namespace

SizeLimits WindowCore::sizeLimits() const
{
    MINMAXINFO info{};
    info.ptMaxTrackSize = {std::numeric_limits<short>::max(), std::numeric_limits<short>::max()};
    SendMessageW(window(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    const auto sizeOf = [](POINT size) { return Size{static_cast<int>(size.x), static_cast<int>(size.y)}; };
    return {sizeOf(info.ptMinTrackSize), sizeOf(info.ptMaxTrackSize)};
}

bool WindowCore::beginsOutline(WPARAM command, LPARAM where)
{
    const WPARAM held = command & kHeldBits;
    const bool moves = (command & ~kHeldBits) == SC_MOVE && held != 0;
    const DragEdges edges = (command & ~kHeldBits) == SC_SIZE ? edgesOf(held) : DragEdges{};
    if (m_traits.dragsFull || (!moves && !edges.any()) || IsZoomed(window()) || m_outline.isRunning())
        return false;
    SendMessageW(window(), WM_ENTERSIZEMOVE, 0, 0);
    const SizeLimits limits = window() ? sizeLimits() : SizeLimits{};
    if (!window() || m_destroying)
        return true;
    m_tip.dismiss(Clock::instance().nowMs());
    m_changingCapture = true;
    SetCapture(window());
    m_changingCapture = false;
    m_outline.begin(placeOf(window()), edges, {GET_X_LPARAM(where), GET_Y_LPARAM(where)}, limits, m_dpi);
    return true;
}

void WindowCore::moveOutline(Point inWindow)
{
    POINT pointer{inWindow.x, inWindow.y};
    ClientToScreen(window(), &pointer);
    const Rect wanted = m_outline.placeFor({static_cast<int>(pointer.x), static_cast<int>(pointer.y)});
    if (wanted == m_outline.place())
        return;
    // As the system does it: who hears of it may change the place.
    RECT place{wanted.left, wanted.top, wanted.right, wanted.bottom};
    const DragEdges edges = m_outline.edges();
    SendMessageW(window(), edges.any() ? WM_SIZING : WM_MOVING, heldBy(edges), reinterpret_cast<LPARAM>(&place));
    if (m_outline.isRunning())
        m_outline.show(morvane::fromWin32(place));
}

void WindowCore::endOutline(bool accepted)
{
    if (!m_outline.isRunning())
        return;
    m_outline.end();
    if (GetCapture() == window()) {
        m_changingCapture = true;
        ReleaseCapture();
        m_changingCapture = false;
    }
    if (accepted) {
        POINT corner{m_outline.place().left, m_outline.place().top};
        if (GetWindowLongPtrW(window(), GWL_STYLE) & WS_CHILD)
            ScreenToClient(GetParent(window()), &corner);
        SetWindowPos(window(), nullptr, corner.x, corner.y, m_outline.place().width(), m_outline.place().height(),
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    if (window())
        SendMessageW(window(), WM_EXITSIZEMOVE, 0, 0);
}

} // namespace ambrel
