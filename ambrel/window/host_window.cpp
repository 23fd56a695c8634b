#include "ambrel/window/host_window.h"

#include "ambrel/window/window_class.h"

#include <utility>

namespace ambrel {

namespace {

constexpr int kBaseDpi = 96;

/// Makes windows created in its scope per-monitor aware where the system knows of that.
class DpiAwareness {
public:
    DpiAwareness() noexcept : m_former(SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2)) {}
    DpiAwareness(const DpiAwareness&) = delete;
    DpiAwareness& operator=(const DpiAwareness&) = delete;
    ~DpiAwareness()
    {
        if (m_former)
            SetThreadDpiAwarenessContext(m_former);
    }

private:
    DPI_AWARENESS_CONTEXT m_former;
};

} // namespace

WindowClass& HostWindow::windowClass() noexcept
{
    static WindowClass instance(L"AmbrelWindow", CS_DBLCLKS, &procedure);
    return instance;
}

HostWindow::~HostWindow()
{
    destroy();
}

bool HostWindow::create(Client& client, const void* root, const Shape& shape)
{
    if (m_window || !windowClass().acquire())
        return false;
    m_holdsClass = true;
    m_client = &client;
    m_root = root;
    const DpiAwareness awareness;
    const RECT& r = shape.rect;
    const HWND window =
        CreateWindowExW(shape.extendedStyle, windowClass().name(), shape.title, shape.style, r.left, r.top,
                        r.right - r.left, r.bottom - r.top, shape.parent, nullptr, morvane::thisModule(), this);
    if (!window)
        releaseClass();
    return window != nullptr;
}

void HostWindow::releaseClass() noexcept
{
    if (std::exchange(m_holdsClass, false))
        windowClass().release();
}

void HostWindow::destroy() noexcept
{
    if (m_window)
        DestroyWindow(m_window);
}

LRESULT HostWindow::defaultFor(UINT message, WPARAM wParam, LPARAM lParam) const noexcept
{
    return DefWindowProcW(m_window, message, wParam, lParam);
}

int HostWindow::dpi() const noexcept
{
    const UINT dpi = m_window ? GetDpiForWindow(m_window) : 0;
    return dpi ? static_cast<int>(dpi) : kBaseDpi;
}

bool HostWindow::anyExists() noexcept
{
    return windowClass().windows() != 0;
}

LRESULT CALLBACK HostWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    auto* self = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == WM_NCCREATE) {
        self = static_cast<HostWindow*>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        SetPropW(window, kRootProperty, const_cast<void*>(self->m_root));
    }
    if (!self)
        return DefWindowProcW(window, message, wParam, lParam);
    if (message != WM_NCDESTROY)
        return self->m_client->windowMessage(message, wParam, lParam);

    RemovePropW(window, kRootProperty);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    const LRESULT result = DefWindowProcW(window, message, wParam, lParam);
    self->m_window = nullptr;
    self->releaseClass();
    self->m_client->windowGone();
    return result;
}

} // namespace ambrel
