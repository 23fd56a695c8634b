#include "tests/strange_host/host_window.h"

namespace morvane::testing {

namespace {
constexpr const wchar_t* kClassName = L"MorvaneStrangeHost";
constexpr UINT kFirstOfControls = WM_USER;
constexpr UINT kLastOfControls = 0x7FFF;
} // namespace

HostWindow::HostWindow()
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = &procedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kClassName;
    RegisterClassW(&windowClass); // fails harmlessly from the second window on
    m_window =
        CreateWindowExW(0, kClassName, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, windowClass.hInstance, nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

HostWindow::~HostWindow()
{
    DestroyWindow(m_window);
}

LRESULT CALLBACK HostWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    const auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && self->onMessage && message >= kFirstOfControls && message <= kLastOfControls)
        return self->onMessage(message, wParam, lParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace morvane::testing
