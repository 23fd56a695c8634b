// The tool tip of a host window.
#pragma once

#include "ambrel/window/tip_timing.h"
#include "frame/platform/handles.h"

namespace ambrel {

/// Shows what TipTiming decides in a small window of its own beside the pointer. The owner asks nextDue for when to
/// call update, and ends the tip before it ends itself.
class ToolTip {
public:
    ToolTip() noexcept = default;
    ToolTip(const ToolTip&) = delete;
    ToolTip& operator=(const ToolTip&) = delete;
    ~ToolTip() { close(); }

    /// `owner`: the window above which the tip stands.
    void offer(HWND owner, std::uint64_t object, std::wstring text, std::int64_t nowMs);
    void dismiss(std::int64_t nowMs) noexcept;
    void update(std::int64_t nowMs) noexcept;
    /// Dots per inch that it is shown at.
    void setDpi(int dpi) noexcept;
    void close() noexcept { m_window.reset(); }

    std::int64_t nextDue() const noexcept { return m_timing.nextDue(); }
    std::uint64_t object() const noexcept { return m_timing.object(); }
    HWND window() const noexcept { return m_window.get(); }

private:
    static class WindowClass& windowClass() noexcept;
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    void show() noexcept;
    bool createWindow() noexcept;
    void releaseClass() noexcept;
    SIZE measure() const noexcept;
    void draw(HDC dc) const noexcept;

    TipTiming m_timing;
    HWND m_owner = nullptr;
    morvane::UniqueWindow m_window;
    morvane::UniqueFont m_font;
    int m_dpi = 96;
    bool m_holdsClass = false;
};

} // namespace ambrel
