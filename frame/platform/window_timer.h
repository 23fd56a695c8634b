// A timer of a window, stopped exactly once.
#pragma once

#include "host/windows_headers.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace morvane {

/// Keeps the window it was started on: the control may have moved to another one when the timer ends.
class WindowTimer {
public:
    WindowTimer() noexcept = default;
    WindowTimer(const WindowTimer&) = delete;
    WindowTimer& operator=(const WindowTimer&) = delete;
    ~WindowTimer() { stop(); }

    /// Replaces the present timer. Without a window nothing runs, but the identifier is remembered. Periods below the
    /// system's minimum become the minimum.
    void start(HWND window, UINT_PTR id, int periodMs) noexcept
    {
        stop();
        m_id = id;
        if (!window || !SetTimer(window, id, static_cast<UINT>(std::max(periodMs, USER_TIMER_MINIMUM)), nullptr))
            return;
        m_window = window;
    }

    void stop() noexcept
    {
        const auto id = std::exchange(m_id, std::nullopt);
        if (const HWND window = std::exchange(m_window, nullptr))
            KillTimer(window, *id);
    }

    /// Whether a tick of that number is this timer's; none is while it is stopped. Any number names a timer, 0 too.
    bool ticksAs(UINT_PTR id) const noexcept { return m_id == id; }

private:
    HWND m_window = nullptr;
    std::optional<UINT_PTR> m_id;
};

} // namespace morvane
