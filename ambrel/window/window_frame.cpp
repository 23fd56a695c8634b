// The window's place on the desktop: size, borders, resolution, companions.
#include "ambrel/window/desktop_place.h"
#include "ambrel/window/root_window.h"
#include "ambrel/window/tree_walk.h"
#include "ambrel/window/window_core.h"

#include <algorithm>
#include <windowsx.h>

namespace ambrel {

namespace {

int scaled(long value, int dpi) noexcept
{
    return MulDiv(static_cast<int>(value), dpi, 96);
}

/// Distances and sizes in pixels grow with the resolution; percentages do not.
PositionHalf scaled(const PositionHalf& half, int from, int to) noexcept
{
    PositionHalf result = half;
    if (half.space == Space::Percent)
        return result;
    result.nearGap = MulDiv(half.nearGap, to, from);
    result.farGap = MulDiv(half.farGap, to, from);
    result.size = MulDiv(half.size, to, from);
    return result;
}

LRESULT hitOfBorder(Point at, SIZE window, const SkinRect& border) noexcept
{
    // A corner reaches three times as far as the border is wide, so that it is easy to hit.
    const bool left = at.x < border.left;
    const bool right = at.x >= window.cx - border.right;
    const bool top = at.y < border.top;
    const bool bottom = at.y >= window.cy - border.bottom;
    if (!left && !right && !top && !bottom)
        return HTCLIENT;
    const bool nearLeft = at.x < 3 * border.left;
    const bool nearRight = at.x >= window.cx - 3 * border.right;
    const bool nearTop = at.y < 3 * border.top;
    const bool nearBottom = at.y >= window.cy - 3 * border.bottom;
    if (nearTop && nearLeft)
        return HTTOPLEFT;
    if (nearTop && nearRight)
        return HTTOPRIGHT;
    if (nearBottom && nearLeft)
        return HTBOTTOMLEFT;
    if (nearBottom && nearRight)
        return HTBOTTOMRIGHT;
    if (left || right)
        return left ? HTLEFT : HTRIGHT;
    return top ? HTTOP : HTBOTTOM;
}

} // namespace

bool WindowCore::onSize(WPARAM kind, LPARAM extent, LRESULT&)
{
    if (kind == SIZE_MINIMIZED)
        return false;
    m_tip.dismiss(Clock::instance().nowMs());
    const Rect client = Rect::at({0, 0}, {GET_X_LPARAM(extent), GET_Y_LPARAM(extent)});
    m_root.moveTo(client);
    m_invalid.add(client);
    askForPaint(nullptr);
    return false;
}

bool WindowCore::onMove(WPARAM, LPARAM, LRESULT&)
{
    m_tip.dismiss(Clock::instance().nowMs());
    moveFollowers();
    return false;
}

void WindowCore::moveFollowers()
{
    RECT place{};
    // A minimized window stands somewhere outside of the screen; what is above it is hidden by the system.
    if (!window() || IsIconic(window()) || !GetWindowRect(window(), &place))
        return;
    const Point now{static_cast<int>(place.left), static_cast<int>(place.top)};
    const Point by = now - m_lastPosition;
    m_lastPosition = now;
    std::erase_if(m_followers,
                  [](const Follower& each) { return !IsWindow(each.window) || (each.hasControl && !each.control); });
    if (by == Point{})
        return;
    const std::vector<Follower> followers = m_followers; // who moves may change the list
    m_movesFollowers = true;
    for (const Follower& each : followers)
        moveFollower(each.window, by);
    m_movesFollowers = false;
}

void WindowCore::moveFollower(HWND follower, Point by) const
{
    // Windows that follow each other move once: one that moves others is not moved by them.
    RootWindow* const root = RootWindow::of(follower);
    if (IsChild(window(), follower) || (root && root->window().m_movesFollowers))
        return;
    RECT place{};
    if (!GetWindowRect(follower, &place))
        return;
    POINT corner{place.left + by.x, place.top + by.y};
    if (GetWindowLongPtrW(follower, GWL_STYLE) & WS_CHILD)
        ScreenToClient(GetParent(follower), &corner);
    SetWindowPos(follower, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void WindowCore::followMoves(HWND follower, ObjectNode* control)
{
    unfollowMoves(follower);
    m_followers.push_back({follower, WeakNode(control), control != nullptr});
}

bool WindowCore::unfollowMoves(HWND follower) noexcept
{
    return std::erase_if(m_followers, [&](const Follower& each) { return each.window == follower; }) != 0;
}

bool WindowCore::moveInto(HWND parent, const Rect& rect)
{
    if (parent && parent != m_parent) {
        m_parent = parent;
        applyParent();
    }
    return SetWindowPos(window(), nullptr, rect.left, rect.top, rect.width(), rect.height(),
                        SWP_NOZORDER | SWP_NOACTIVATE) != FALSE;
}

void WindowCore::applyParent()
{
    constexpr DWORD kOwn = WS_POPUP | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    const HWND handle = window();
    if (!handle || !IsWindow(m_parent))
        return;
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(handle, GWL_STYLE));
    const auto setStyle = [&](DWORD wanted) { SetWindowLongPtrW(handle, GWL_STYLE, static_cast<LONG_PTR>(wanted)); };
    // The platform wants a child's style before it becomes one, and takes it back afterwards.
    if (!m_traits.popup) {
        setStyle((style & ~(kOwn | WS_THICKFRAME)) | WS_CHILD);
        SetParent(handle, m_parent);
    } else {
        if (style & WS_CHILD)
            SetParent(handle, nullptr);
        setStyle((style & ~static_cast<DWORD>(WS_CHILD)) | kOwn);
        SetWindowLongPtrW(handle, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(m_parent));
    }
    applyTraits();
}

bool WindowCore::resizeWindow(Size client)
{
    if (!window())
        return false;
    // All of it is client area.
    return SetWindowPos(window(), nullptr, 0, 0, client.width, client.height,
                        SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE) != FALSE;
}

bool WindowCore::centre()
{
    RECT place{};
    if (!window() || !GetWindowRect(window(), &place))
        return false;
    const bool isChild = (GetWindowLongPtrW(window(), GWL_STYLE) & WS_CHILD) != 0;
    const HWND above = isChild ? GetParent(window()) : GetWindow(window(), GW_OWNER);
    const bool overOwner = !isChild && above && !IsIconic(above);
    RECT around{};
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (isChild)
        GetClientRect(above, &around);
    else if (!GetMonitorInfoW(MonitorFromWindow(overOwner ? above : window(), MONITOR_DEFAULTTONEAREST), &monitor))
        return false;
    else if (overOwner)
        GetWindowRect(above, &around);
    else
        around = monitor.rcWork;
    const Size size = morvane::fromWin32(place).size();
    const Rect middle = isChild ? morvane::centredIn(morvane::fromWin32(around), size)
                                : centredWithin(morvane::fromWin32(around), size, morvane::fromWin32(monitor.rcWork));
    return SetWindowPos(window(), nullptr, middle.left, middle.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) !=
           FALSE;
}

bool WindowCore::isTransparentAt(Point onScreen) const
{
    POINT at{onScreen.x, onScreen.y};
    ScreenToClient(window(), &at);
    const DibSurface* const surface = m_surface.pixels();
    if (!surface || at.x < 0 || at.y < 0 || at.x >= surface->size().width || at.y >= surface->size().height)
        return false;
    return surface->pixels().row(at.y)[at.x] >> 24 == 0;
}

bool WindowCore::onHitTest(WPARAM, LPARAM where, LRESULT& result)
{
    const Point onScreen{GET_X_LPARAM(where), GET_Y_LPARAM(where)};
    RECT place{};
    GetWindowRect(window(), &place);
    const Point at = onScreen - Point{static_cast<int>(place.left), static_cast<int>(place.top)};
    const bool hasFrame = !IsZoomed(window()) && !(GetWindowLongPtrW(window(), GWL_STYLE) & WS_CHILD);
    if (hasFrame && m_traits.usesFrameRegions) {
        result = m_frameRegions.hitAt(at);
        if (result != HTNOWHERE)
            return true;
    }
    if (hasFrame && m_traits.resizable) {
        const SkinRect& b = m_traits.resizeBorder;
        const SkinRect border{scaled(b.left, m_dpi), scaled(b.top, m_dpi), scaled(b.right, m_dpi),
                              scaled(b.bottom, m_dpi)};
        result = hitOfBorder(at, {place.right - place.left, place.bottom - place.top}, border);
        if (result != HTCLIENT)
            return true;
    }
    result = HTTRANSPARENT;
    return m_traits.perPixel && isTransparentAt(onScreen);
}

bool WindowCore::onCalculateClient(WPARAM wantsRects, LPARAM parameters, LRESULT& result)
{
    // All of the window is its client area; a maximized one is cut to the monitor, since the system lets its frame hang
    // over.
    if (!wantsRects)
        return false;
    RECT& rect = reinterpret_cast<NCCALCSIZE_PARAMS*>(parameters)->rgrc[0];
    if (IsZoomed(window())) {
        MONITORINFO monitor{};
        monitor.cbSize = sizeof monitor;
        if (GetMonitorInfoW(MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST), &monitor))
            rect = monitor.rcWork;
    }
    result = 0;
    return true;
}

bool WindowCore::onMinMaxInfo(WPARAM, LPARAM parameters, LRESULT&)
{
    auto& info = *reinterpret_cast<MINMAXINFO*>(parameters);
    const auto limit = [&](POINT& track, const SkinSize& size) {
        if (size.cx > 0)
            track.x = scaled(size.cx, m_dpi);
        if (size.cy > 0)
            track.y = scaled(size.cy, m_dpi);
    };
    limit(info.ptMinTrackSize, m_traits.minSize);
    limit(info.ptMaxTrackSize, m_traits.maxSize);
    return true;
}

void WindowCore::rescalePositions(int from, int to)
{
    std::unordered_map<const ObjectNode*, std::pair<WeakNode, Rescaled>> adapted;
    walkBeneath(m_root.node(), [&](ObjectNode& node) {
        Rescaled entry{node.position(), from, {}};
        // What nobody has moved since goes by its first position, so that roundings do not add up.
        const auto known = m_rescaled.find(&node);
        if (known != m_rescaled.end() && known->second.first && known->second.second.given == node.position())
            entry = known->second.second;
        entry.given = {scaled(entry.original.horizontal, entry.dpi, to),
                       scaled(entry.original.vertical, entry.dpi, to)};
        node.setPosition(entry.given);
        coreOf(node).scaleChildGaps(from, to);
        adapted.insert_or_assign(&node, std::pair(WeakNode(&node), entry));
        return false;
    });
    m_rescaled = std::move(adapted);
}

bool WindowCore::onDpiChanged(WPARAM dpi, LPARAM suggested, LRESULT&)
{
    const int present = static_cast<int>(LOWORD(dpi));
    const int former = m_dpi;
    if (present <= 0 || present == former)
        return true;
    m_dpi = present;
    m_surface.setScale(m_dpi * 100 / 96);
    m_tip.dismiss(Clock::instance().nowMs());
    m_tip.setDpi(m_dpi);
    rescalePositions(former, m_dpi);
    m_root.scaleChildGaps(former, m_dpi);
    if (suggested) {
        const RECT& place = *reinterpret_cast<const RECT*>(suggested);
        SetWindowPos(window(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    m_root.layOutChildren();
    invalidate(m_root.node().rect());
    return true;
}

} // namespace ambrel
