// What of a window is drawn, when, and how it comes onto the screen.
#include "ambrel/trace/trace.h"
#include "ambrel/window/window_core.h"
#include "ambrel/window/window_messages.h"

#include <algorithm>
#include <iterator>

namespace ambrel {

namespace {

constexpr int kMostRequests = 32; // for parts of a window, between two paints

constexpr DWORD kFadeMs = 200;
constexpr DWORD kFadeStepMs = 15;

/// What of `rect` lies outside of `hole`, as up to four rectangles.
void addOutside(InvalidRegion& region, const Rect& rect, const Rect& hole)
{
    const Rect cut = rect.intersection(hole);
    if (cut.isEmpty())
        return region.add(rect);
    region.add({rect.left, rect.top, rect.right, cut.top});
    region.add({rect.left, cut.bottom, rect.right, rect.bottom});
    region.add({rect.left, cut.top, cut.left, cut.bottom});
    region.add({cut.right, cut.top, rect.right, cut.bottom});
}

} // namespace

/// While it exists, painting is not begun anew from within.
class WindowCore::Painting {
public:
    explicit Painting(WindowCore& core) noexcept : m_core(core), m_former(std::exchange(core.m_painting, true)) {}
    Painting(const Painting&) = delete;
    Painting& operator=(const Painting&) = delete;
    ~Painting() { m_core.m_painting = m_former; }

private:
    WindowCore& m_core;
    bool m_former;
};

void WindowCore::askForPaint(const RECT* part)
{
    if (window()) // for no window at all, the system would repaint everything on the screen
        InvalidateRect(window(), part, FALSE);
}

void WindowCore::invalidate(const Rect& rect)
{
    if (rect.isEmpty())
        return;
    const InvalidRegion known = m_invalid;
    m_invalid.add(m_refreshType == VEX_REFRESH_ALL ? m_root.node().rect() : rect);
    if (m_batching || (m_frozen && m_frozenPart.isEmpty()) || !window() || m_requests > kMostRequests)
        return;
    // Every request costs a round trip to the system's server: what was asked for is not asked for again, and when very
    // much changes before the next paint, the whole window is asked for once. Still only what changed is drawn.
    for (const Rect& each : m_invalid.rects()) {
        if (known.covers(each))
            continue;
        const RECT part = morvane::toWin32(each);
        ++m_requests;
        askForPaint(m_requests > kMostRequests ? nullptr : &part);
    }
}

void WindowCore::requestPaint()
{
    for (const Rect& each : m_invalid.rects()) {
        const RECT part = morvane::toWin32(each);
        askForPaint(&part);
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
    paint(nullptr, nullptr);
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
    if (!frozen)
        requestPaint();
}

void WindowCore::setFrozenPart(const Rect& part)
{
    m_frozenPart = part;
    requestPaint();
}

void WindowCore::setBatching(bool batching)
{
    m_batching = batching;
    if (!batching && !m_frozen)
        requestPaint(); // shows what was collected
}

bool WindowCore::onEraseBackground(WPARAM, LPARAM, LRESULT& result)
{
    result = 1; // painting covers everything
    return true;
}

bool WindowCore::onPaint(WPARAM, LPARAM, LRESULT&)
{
    m_requests = 0;
    const HWND painted = window(); // may end while it is being painted; what began with it ends with it
    PAINTSTRUCT paintInfo{};
    const HDC dc = BeginPaint(painted, &paintInfo);
    if (!dc)
        return false;
    try {
        paint(dc, &paintInfo.rcPaint);
    } catch (...) {
        EndPaint(painted, &paintInfo);
        throw;
    }
    EndPaint(painted, &paintInfo);
    return true;
}

bool WindowCore::onPrintClient(WPARAM dc, LPARAM, LRESULT&)
{
    paint(nullptr, nullptr); // what waits, too
    if (dc && window())
        m_surface.copyTo(reinterpret_cast<HDC>(dc), m_root.node().rect());
    return true;
}

InvalidRegion WindowCore::takeInvalid()
{
    if (!m_frozen)
        return std::exchange(m_invalid, {});
    InvalidRegion now;
    if (m_frozenPart.isEmpty())
        return now;
    InvalidRegion later;
    for (const Rect& each : m_invalid.rects()) {
        addOutside(now, each, m_frozenPart);
        later.add(each.intersection(m_frozenPart));
    }
    m_invalid = later;
    return now;
}

void WindowCore::paint(HDC dc, const RECT* exposed)
{
    const Rect client = m_root.node().rect();
    const Size size = client.size();
    if (m_painting || size.isEmpty())
        return;
    m_surface.setOpaque(!m_traits.perPixel);
    if (m_surface.resize(size))
        m_invalid.add(client);
    m_invalid.clip(client);
    if (const InvalidRegion region = takeInvalid(); !region.isEmpty()) {
        const Painting painting(*this);
        m_lastPainted = region.bounds();
        for (const Rect& part : region.rects()) {
            traceRect(AMBREL_TRACE_PAINT, &m_face, morvane::toSkinRect(part));
            m_surface.draw(m_root.node(), part, m_traits.blendsWithParent ? window() : nullptr);
        }
        if (!m_batching && !m_frozen)
            requestPaint(); // what was asked for meanwhile, in case a paint message inside this one took it
        if (m_traits.shaped)
            updateShape();
        if (m_isGround)
            tellGroundChanged();
    }
    if (!window())
        return;
    if (m_traits.perPixel)
        presentPerPixel();
    else if (dc && exposed)
        m_surface.copyTo(dc, morvane::fromWin32(*exposed).united(m_lastPainted));
}

void WindowCore::tellGroundChanged()
{
    for (HWND child = window() ? GetWindow(window(), GW_CHILD) : nullptr; child; child = GetWindow(child, GW_HWNDNEXT))
        PostMessageW(child, kGroundChangedMessage, 0, 0);
}

bool WindowCore::onGroundNeeded(WPARAM, LPARAM, LRESULT&)
{
    m_isGround = true;
    return true;
}

bool WindowCore::onGroundChanged(WPARAM, LPARAM, LRESULT&)
{
    if (m_traits.blendsWithParent)
        invalidate(m_root.node().rect());
    return true;
}

bool WindowCore::presentPerPixel(int opacity)
{
    RECT place{};
    return GetWindowRect(window(), &place) && !IsIconic(window()) &&
           m_surface.presentLayered(window(), {static_cast<int>(place.left), static_cast<int>(place.top)},
                                    opacity * m_root.node().opacity() / 255);
}

void WindowCore::renderAll(Size size)
{
    if (m_root.node().rect().size() != size)
        m_root.moveTo(Rect::at({0, 0}, size));
    m_surface.resize(size);
    const Painting painting(*this);
    m_surface.draw(m_root.node(), Rect::at({0, 0}, size), m_traits.blendsWithParent ? window() : nullptr);
}

void WindowCore::updateShape()
{
    if (!window())
        return;
    morvane::UniqueRegion shape(m_traits.shaped ? m_surface.opaqueRegion() : nullptr);
    if (SetWindowRgn(window(), shape.get(), TRUE))
        shape.detach(); // the system's now
}

void WindowCore::fade(bool show, VEX_FADE_TYPE type)
{
    static constexpr DWORD kDirections[] = {AW_SLIDE | AW_VER_POSITIVE, AW_SLIDE | AW_VER_NEGATIVE,
                                            AW_SLIDE | AW_HOR_POSITIVE, AW_SLIDE | AW_HOR_NEGATIVE, AW_BLEND};
    const DWORD direction = type >= 0 && type < static_cast<int>(std::size(kDirections)) ? kDirections[type] : AW_BLEND;
    if (show)
        finishWaitingObjects(); // the platform draws the window before it says that it shows it
    if (!window() || (IsWindowVisible(window()) != FALSE) == show)
        return;
    const bool isLayered = (GetWindowLongPtrW(window(), GWL_EXSTYLE) & WS_EX_LAYERED) != 0;
    if (m_traits.perPixel && !Clock::instance().isFrozen())
        return fadeLayer(show); // the platform cannot animate what has an alpha of its own
    if (isLayered || Clock::instance().isFrozen() ||
        !AnimateWindow(window(), kFadeMs, direction | (show ? AW_ACTIVATE : AW_HIDE))) {
        if (window())
            ShowWindow(window(), show ? SW_SHOW : SW_HIDE);
    }
}

void WindowCore::fadeLayer(bool show)
{
    paint(nullptr, nullptr);
    presentPerPixel(show ? 0 : 255);
    if (show && window())
        ShowWindow(window(), SW_SHOW);
    for (DWORD passed = 0; passed < kFadeMs && window(); passed += kFadeStepMs) {
        const int progress = static_cast<int>(255 * passed / kFadeMs);
        presentPerPixel(show ? progress : 255 - progress);
        Sleep(kFadeStepMs);
    }
    if (!window())
        return;
    if (!show)
        ShowWindow(window(), SW_HIDE);
    else
        presentPerPixel();
}

} // namespace ambrel
