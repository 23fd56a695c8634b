// The window's place on the desktop: size, borders, resolution, shape, painting.
#include "ambrel/trace/trace.h"
#include "ambrel/window/tree_walk.h"
#include "ambrel/window/window_core.h"

#include <algorithm>
#include <windowsx.h>

namespace ambrel {

namespace {

constexpr int kMostRequests = 32; // for parts of a window, between two paints

constexpr DWORD kFadeMs = 200;

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

void WindowCore::invalidate(const Rect& rect)
{
    if (rect.isEmpty())
        return;
    const InvalidRegion known = m_invalid;
    m_invalid.add(rect);
    if (m_batching || m_frozen || !window() || m_requests > kMostRequests)
        return;
    // Every request costs a round trip to the system's server: what was asked for is not asked for again, and when very
    // much changes before the next paint, the whole window is asked for once. Still only what changed is drawn.
    for (const Rect& each : m_invalid.rects()) {
        if (known.covers(each))
            continue;
        const RECT part = morvane::toWin32(each);
        ++m_requests;
        InvalidateRect(window(), m_requests > kMostRequests ? nullptr : &part, FALSE);
    }
}

void WindowCore::requestPaint()
{
    for (const Rect& each : m_invalid.rects()) {
        const RECT part = morvane::toWin32(each);
        InvalidateRect(window(), &part, FALSE);
    }
}

void WindowCore::paintNow()
{
    if (!window() || m_painting)
        return;
    const bool isOnlyOurs =
        m_requests > 0 && m_requests <= kMostRequests && !m_frozen && !m_batching && !m_traits.perPixel;
    if (!isOnlyOurs || !m_surface.pixels() || m_surface.size() != m_root.node().rect().size()) {
        UpdateWindow(window());
        return;
    }
    // A few changed parts are painted without a paint message, which would cost twice as many calls to the system's
    // server.
    const ComPtr<IAmbrel> hold(&m_face);
    const InvalidRegion region = m_invalid;
    m_requests = 0;
    for (const Rect& each : region.rects()) {
        const RECT part = morvane::toWin32(each);
        ValidateRect(window(), &part); // before drawing, which may ask for more
    }
    try {
        paint(nullptr, nullptr);
    } catch (...) {
        m_painting = false;
        throw;
    }
    if (!window()) // ended by what was drawn
        return;
    const bool hidesCaret = HideCaret(window()) != FALSE;
    m_surface.copyTo(window(), region.rects());
    if (hidesCaret)
        ShowCaret(window());
}

void WindowCore::setFrozen(bool frozen)
{
    m_frozen = frozen;
    if (!frozen && window())
        requestPaint();
}

void WindowCore::setBatching(bool batching)
{
    m_batching = batching;
    if (!batching && !m_frozen)
        setFrozen(false); // shows what was collected
}

bool WindowCore::onEraseBackground(WPARAM, LPARAM, LRESULT& result)
{
    result = 1; // painting covers everything
    return true;
}

bool WindowCore::onPaint(WPARAM, LPARAM, LRESULT&)
{
    m_requests = 0;
    PAINTSTRUCT paintInfo{};
    const HDC dc = BeginPaint(window(), &paintInfo);
    if (!dc)
        return false;
    try {
        paint(dc, &paintInfo.rcPaint);
    } catch (...) {
        m_painting = false;
        EndPaint(window(), &paintInfo);
        throw;
    }
    EndPaint(window(), &paintInfo);
    return true;
}

void WindowCore::paint(HDC dc, const RECT* exposed)
{
    const Rect client = m_root.node().rect();
    const Size size = client.size();
    if (m_painting || size.isEmpty())
        return;
    m_surface.setOpaque(!m_traits.perPixel);
    const bool fresh = m_surface.resize(size);
    if (fresh)
        m_invalid.add(client);
    m_invalid.clip(client);
    if (!m_frozen && !m_invalid.isEmpty()) {
        const InvalidRegion region = m_invalid;
        m_invalid.clear();
        m_painting = true;
        m_lastPainted = region.bounds();
        for (const Rect& part : region.rects()) {
            traceRect(AMBREL_TRACE_PAINT, &m_face, morvane::toSkinRect(part));
            m_surface.draw(m_root.node(), part);
        }
        m_painting = false;
        if (!m_batching)
            requestPaint(); // what was asked for meanwhile, in case a paint message inside this one took it
        if (m_traits.shaped)
            updateShape();
    }
    if (m_traits.perPixel)
        presentPerPixel();
    else if (dc && exposed)
        m_surface.copyTo(dc, morvane::fromWin32(*exposed).united(m_lastPainted));
}

void WindowCore::presentPerPixel()
{
    RECT place{};
    GetWindowRect(window(), &place);
    m_surface.presentLayered(window(), {static_cast<int>(place.left), static_cast<int>(place.top)});
}

void WindowCore::renderAll(Size size)
{
    if (m_root.node().rect().size() != size)
        m_root.moveTo(Rect::at({0, 0}, size));
    m_surface.resize(size);
    m_painting = true;
    m_surface.draw(m_root.node(), Rect::at({0, 0}, size));
    m_painting = false;
}

bool WindowCore::onSize(WPARAM kind, LPARAM extent, LRESULT&)
{
    if (kind == SIZE_MINIMIZED)
        return false;
    m_tip.dismiss(Clock::instance().nowMs());
    const Rect client = Rect::at({0, 0}, {GET_X_LPARAM(extent), GET_Y_LPARAM(extent)});
    m_root.moveTo(client);
    m_invalid.add(client);
    InvalidateRect(window(), nullptr, FALSE);
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
    GetWindowRect(window(), &place);
    const Point now{static_cast<int>(place.left), static_cast<int>(place.top)};
    const Point by = now - m_lastPosition;
    m_lastPosition = now;
    std::erase_if(m_followers, [](HWND each) { return !IsWindow(each); });
    if (by == Point{})
        return;
    for (const HWND each : std::vector<HWND>(m_followers)) {
        RECT old{};
        if (GetWindowRect(each, &old))
            SetWindowPos(each, nullptr, old.left + by.x, old.top + by.y, 0, 0,
                         SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

bool WindowCore::onHitTest(WPARAM, LPARAM where, LRESULT& result)
{
    if (!m_traits.resizable || IsZoomed(window()) || (GetWindowLongPtrW(window(), GWL_STYLE) & WS_CHILD))
        return false;
    RECT place{};
    GetWindowRect(window(), &place);
    const SkinRect& b = m_traits.resizeBorder;
    const SkinRect border{scaled(b.left, m_dpi), scaled(b.top, m_dpi), scaled(b.right, m_dpi), scaled(b.bottom, m_dpi)};
    const Point at{GET_X_LPARAM(where) - static_cast<int>(place.left),
                   GET_Y_LPARAM(where) - static_cast<int>(place.top)};
    result = hitOfBorder(at, {place.right - place.left, place.bottom - place.top}, border);
    return result != HTCLIENT;
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

bool WindowCore::onDpiChanged(WPARAM dpi, LPARAM suggested, LRESULT&)
{
    const int former = std::exchange(m_dpi, static_cast<int>(LOWORD(dpi)));
    if (m_dpi <= 0 || former <= 0 || m_dpi == former)
        return true;
    m_surface.setScale(m_dpi * 100 / 96);
    walkBeneath(m_root.node(), [&](ObjectNode& node) {
        const Position& old = node.position();
        node.setPosition({scaled(old.horizontal, former, m_dpi), scaled(old.vertical, former, m_dpi)});
        return false;
    });
    const RECT& place = *reinterpret_cast<const RECT*>(suggested);
    SetWindowPos(window(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    m_root.layOutChildren();
    invalidate(m_root.node().rect());
    return true;
}

void WindowCore::updateShape()
{
    if (window())
        SetWindowRgn(window(), m_traits.shaped ? m_surface.opaqueRegion() : nullptr, TRUE);
}

void WindowCore::fade(bool show, VEX_FADE_TYPE type)
{
    static constexpr DWORD kDirections[] = {AW_SLIDE | AW_VER_POSITIVE, AW_SLIDE | AW_VER_NEGATIVE,
                                            AW_SLIDE | AW_HOR_POSITIVE, AW_SLIDE | AW_HOR_NEGATIVE, AW_BLEND};
    const DWORD direction = type >= 0 && type < static_cast<int>(std::size(kDirections)) ? kDirections[type] : AW_BLEND;
    if (!AnimateWindow(window(), kFadeMs, direction | (show ? AW_ACTIVATE : AW_HIDE)))
        ShowWindow(window(), show ? SW_SHOW : SW_HIDE);
}

} // namespace ambrel
