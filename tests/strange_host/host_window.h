// The window that controls send messages to.
#pragma once

#include "host/host.h"

#include <functional>

namespace morvane::testing {

/// A window nobody sees. Messages of the range that controls use go to `onMessage`, the rest to the system.
class HostWindow {
public:
    HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow();

    HWND handle() const { return m_window; }

    std::function<LRESULT(UINT message, WPARAM wParam, LPARAM lParam)> onMessage;

private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
};

} // namespace morvane::testing
