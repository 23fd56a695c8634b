// A window class that lives as long as one of its windows, so that the module can be unloaded and loaded again.
#pragma once

#include "frame/com/compiler.h"

namespace ambrel {

/// One per class, with static storage; for the user-interface thread.
class WindowClass {
public:
    constexpr WindowClass(const wchar_t* name, UINT style, WNDPROC procedure) noexcept
        : m_name(name), m_style(style), m_procedure(procedure)
    {
    }

    /// Before each creation; false when the system refuses.
    bool acquire() noexcept
    {
        if (m_windows++ != 0)
            return true;
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        description.style = m_style;
        description.lpfnWndProc = m_procedure;
        description.hInstance = morvane::thisModule();
        description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        description.lpszClassName = m_name;
        // A class whose last window was still being destroyed when it was to go is there already, and ours.
        if (RegisterClassExW(&description) || GetLastError() == ERROR_CLASS_ALREADY_EXISTS)
            return true;
        m_windows = 0;
        return false;
    }

    /// After the window has gone, or when its creation failed.
    void release() noexcept
    {
        if (--m_windows == 0)
            UnregisterClassW(m_name, morvane::thisModule());
    }

    const wchar_t* name() const noexcept { return m_name; }
    int windows() const noexcept { return m_windows; }

private:
    const wchar_t* m_name;
    UINT m_style;
    WNDPROC m_procedure;
    int m_windows = 0;
};

} // namespace ambrel
