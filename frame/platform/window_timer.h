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

    /// Replaces the present timer. Without a window nothing runs until resume(). Periods below the system's minimum
    /// become the minimum.
    void start(HWND window, UINT_PTR id, int periodMs) noexcept
    {
        stop();
        m_id = id;
        m_periodMs = std::max(periodMs, USER_TIMER_MINIMUM);
        if (window && SetTimer(window, id, static_cast<UINT>(m_periodMs), nullptr))
            m_window = window;
    }

    /// Runs on this window what was started without one, or on one that is gone.
    void resume(HWND window) noexcept
    {
        if (m_id && !IsWindow(m_window))
            start(window, *m_id, m_periodMs);
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
    std::optional<UINT_PTR> m_id; // while it is started
    int m_periodMs = 0;
};

} // namespace morvane
