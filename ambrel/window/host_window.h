// The platform's window beneath an object tree: its class, its creation and its end.
#pragma once

#include "host/windows_headers.h"

namespace ambrel {

/// Host windows carry this window property; its value is the window's root (IAmbrel*), not counted.
inline constexpr wchar_t kRootProperty[] = L"CAMBREL";

/// One window of the runtime's own class. Its client hears every message; all calls are for the window's thread.
class HostWindow {
public:
    class Client {
    public:
        /// What the window procedure answers. May end the window.
        virtual LRESULT windowMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
        /// The last thing the client hears: the handle is invalid now. May end the client.
        virtual void windowGone() noexcept = 0;

    protected:
        ~Client() = default;
    };

    struct Shape {
        HWND parent = nullptr; // of a child, owner of a top-level window
        RECT rect{};
        DWORD style = 0;
        DWORD extendedStyle = 0;
        const wchar_t* title = L"";
    };

    HostWindow() noexcept = default;
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    /// The window must be gone by then.
    ~HostWindow();

    /// Per-monitor DPI aware, whatever the process is. `root` becomes the window property. False when the system
    /// refuses.
    bool create(Client& client, const void* root, const Shape& shape);
    void destroy() noexcept;

    HWND handle() const noexcept { return m_window; }
    LRESULT defaultFor(UINT message, WPARAM wParam, LPARAM lParam) const noexcept;

    /// Dots per inch of the monitor it stands on; 96 is 100 percent.
    int dpi() const noexcept;

    /// True while a window of the runtime's class exists in this process.
    static bool anyExists() noexcept;

private:
    static class WindowClass& windowClass() noexcept;
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    void releaseClass() noexcept;

    Client* m_client = nullptr;
    const void* m_root = nullptr;
    HWND m_window = nullptr;
    bool m_holdsClass = false;
};

} // namespace ambrel
