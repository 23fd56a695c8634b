#include "ambrel/window/vex_window.h"

#include "ambrel/objects/geometry_objects.h"
#include "frame/com/instance.h"
#include "host/geometry.h"

#include <algorithm>
#include <string>

namespace ambrel {

using morvane::Bstr;
using morvane::filling;
using morvane::returning;

namespace {

HWND asWindow(hyper number) noexcept
{
    return reinterpret_cast<HWND>(number);
}
hyper asNumber(HWND window) noexcept
{
    return reinterpret_cast<hyper>(window);
}
std::wstring textOf(BSTR text)
{
    return std::wstring(morvane::viewOf(text));
}

/// Stores what the operation answers; S_FALSE when the number is no window.
template <class Out, class Operation>
HRESULT on(hyper number, Out* result, Operation&& operation) noexcept
{
    return filling(result, [&](Out& place) {
        const HWND window = asWindow(number);
        if (!IsWindow(window))
            return S_FALSE;
        place = static_cast<Out>(operation(window));
        return S_OK;
    });
}

/// The same for operations that succeed or fail.
template <class Operation>
HRESULT does(hyper number, VARIANT_BOOL* result, Operation&& operation) noexcept
{
    return on(number, result, [&](HWND window) { return operation(window) ? VARIANT_TRUE : VARIANT_FALSE; });
}

HRESULT rectOf(hyper number, IVexRect** result, BOOL(WINAPI* get)(HWND, RECT*)) noexcept
{
    return filling(result, [&](IVexRect*& place) {
        RECT rect{};
        if (!get(asWindow(number), &rect))
            return S_FALSE;
        place = makeRect(morvane::fromWin32(rect)).detach();
        return S_OK;
    });
}

HRESULT modify(hyper number, int which, LONG remove, LONG add, VARIANT_BOOL* result) noexcept
{
    return does(number, result, [&](HWND window) {
        const LONG_PTR former = GetWindowLongPtrW(window, which);
        const LONG_PTR style = (former & ~static_cast<LONG_PTR>(remove)) | add;
        if (style == former)
            return false;
        SetWindowLongPtrW(window, which, style);
        return true;
    });
}

} // namespace

morvane::ComPtr<IVexWindow> makeVexWindow()
{
    return morvane::ComPtr<IVexWindow>(morvane::Instance<VexWindow>::make().get());
}

STDMETHODIMP VexWindow::ShowWindow(hyper hWnd, ShowWindowFlags flag, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) { return ::ShowWindow(window, flag); });
}

STDMETHODIMP VexWindow::SetWindowPos(hyper hWnd, hyper after, short x, short y, short cx, short cy, LONG flags,
                                     VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) {
        return ::SetWindowPos(window, asWindow(after), x, y, cx, cy, static_cast<UINT>(flags));
    });
}

STDMETHODIMP VexWindow::SendMessage(hyper hWnd, LONG message, hyper wParam, hyper lParam, LONG* result) noexcept
{
    return on(hWnd, result, [&](HWND window) {
        return SendMessageW(window, static_cast<UINT>(message), static_cast<WPARAM>(wParam),
                            static_cast<LPARAM>(lParam));
    });
}

STDMETHODIMP VexWindow::PostMessage(hyper hWnd, LONG message, hyper wParam, hyper lParam, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) {
        return PostMessageW(window, static_cast<UINT>(message), static_cast<WPARAM>(wParam),
                            static_cast<LPARAM>(lParam));
    });
}

STDMETHODIMP VexWindow::GetStyle(hyper hWnd, LONG* result) noexcept
{
    return on(hWnd, result, [](HWND window) { return GetWindowLongPtrW(window, GWL_STYLE); });
}
STDMETHODIMP VexWindow::ModifyStyle(hyper hWnd, LONG remove, LONG add, VARIANT_BOOL* result) noexcept
{
    return modify(hWnd, GWL_STYLE, remove, add, result);
}
STDMETHODIMP VexWindow::GetExStyle(hyper hWnd, LONG* result) noexcept
{
    return on(hWnd, result, [](HWND window) { return GetWindowLongPtrW(window, GWL_EXSTYLE); });
}
STDMETHODIMP VexWindow::ModifyExStyle(hyper hWnd, LONG remove, LONG add, VARIANT_BOOL* result) noexcept
{
    return modify(hWnd, GWL_EXSTYLE, remove, add, result);
}

STDMETHODIMP VexWindow::Create(LONG exStyle, BSTR className, BSTR windowName, LONG style, short x, short y, short width,
                               short height, hyper parent, hyper* result) noexcept
{
    return filling(result, [&](hyper& created) {
        created = asNumber(CreateWindowExW(static_cast<DWORD>(exStyle), textOf(className).c_str(),
                                           textOf(windowName).c_str(), static_cast<DWORD>(style), x, y, width, height,
                                           asWindow(parent), nullptr, GetModuleHandleW(nullptr), nullptr));
        return created ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexWindow::Destroy(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [](HWND window) { return DestroyWindow(window); });
}
STDMETHODIMP VexWindow::MoveWindow(hyper hWnd, short x, short y, short width, short height, VARIANT_BOOL repaint,
                                   VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result,
                [&](HWND window) { return ::MoveWindow(window, x, y, width, height, repaint != VARIANT_FALSE); });
}
STDMETHODIMP VexWindow::GetDlgCtrlID(hyper hWnd, short* result) noexcept
{
    return on(hWnd, result, [](HWND window) { return ::GetDlgCtrlID(window); });
}
STDMETHODIMP VexWindow::SetDlgCtrlID(hyper hWnd, short id, LONG* result) noexcept
{
    return on(hWnd, result, [&](HWND window) { return SetWindowLongPtrW(window, GWLP_ID, id); });
}
STDMETHODIMP VexWindow::GetDlgItem(hyper hWnd, short id, hyper* result) noexcept
{
    return on(hWnd, result, [&](HWND window) { return asNumber(::GetDlgItem(window, id)); });
}

STDMETHODIMP VexWindow::SetWindowText(hyper hWnd, BSTR text, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) { return SetWindowTextW(window, textOf(text).c_str()); });
}
STDMETHODIMP VexWindow::GetWindowText(hyper hWnd, BSTR* result) noexcept
{
    return filling(result, [&](BSTR& place) {
        const HWND window = asWindow(hWnd);
        const bool exists = IsWindow(window) != FALSE;
        std::wstring text(static_cast<std::size_t>(exists ? GetWindowTextLengthW(window) : 0) + 1, L'\0');
        const int length = exists ? GetWindowTextW(window, text.data(), static_cast<int>(text.size())) : 0;
        place = Bstr(std::wstring_view(text.data(), static_cast<std::size_t>(length))).detach();
        return exists ? S_OK : S_FALSE;
    });
}

STDMETHODIMP VexWindow::BringWindowToTop(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [](HWND window) { return ::BringWindowToTop(window); });
}
STDMETHODIMP VexWindow::IsWindowVisible(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [](HWND window) { return ::IsWindowVisible(window); });
}
STDMETHODIMP VexWindow::IsWindowEnabled(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [](HWND window) { return ::IsWindowEnabled(window); });
}
STDMETHODIMP VexWindow::EnableWindow(hyper hWnd, VARIANT_BOOL enable, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) { return ::EnableWindow(window, enable != VARIANT_FALSE); });
}

STDMETHODIMP VexWindow::SetTimer(hyper hWnd, short id, short elapse, short* result) noexcept
{
    return on(hWnd, result, [&](HWND window) {
        return ::SetTimer(window, static_cast<UINT_PTR>(id), static_cast<UINT>(std::max<short>(elapse, 0)), nullptr);
    });
}
STDMETHODIMP VexWindow::KillTimer(hyper hWnd, short id, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) { return ::KillTimer(window, static_cast<UINT_PTR>(id)); });
}

STDMETHODIMP VexWindow::GetWindowRect(hyper hWnd, IVexRect** result) noexcept
{
    return rectOf(hWnd, result, ::GetWindowRect);
}
STDMETHODIMP VexWindow::GetClientRect(hyper hWnd, IVexRect** result) noexcept
{
    return rectOf(hWnd, result, ::GetClientRect);
}
STDMETHODIMP VexWindow::IsZoomed(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [](HWND window) { return ::IsZoomed(window); });
}

STDMETHODIMP VexWindow::SetRedraw(hyper hWnd, VARIANT_BOOL redraw, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) {
        SendMessageW(window, WM_SETREDRAW, redraw != VARIANT_FALSE, 0);
        return true;
    });
}
STDMETHODIMP VexWindow::InvalidateRect(hyper hWnd, short left, short top, short right, short bottom, VARIANT_BOOL erase,
                                       VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) {
        const RECT rect{left, top, right, bottom};
        return ::InvalidateRect(window, &rect, erase != VARIANT_FALSE);
    });
}
STDMETHODIMP VexWindow::UpdateWindow(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [](HWND window) { return ::UpdateWindow(window); });
}
STDMETHODIMP VexWindow::LockWindowUpdate(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return filling(result, [&](VARIANT_BOOL& done) { // 0 unlocks
        done = morvane::toVariantBool(::LockWindowUpdate(asWindow(hWnd)) != FALSE);
        return done ? S_OK : S_FALSE;
    });
}
STDMETHODIMP VexWindow::RedrawWindow(hyper hWnd, SkinRect update, hyper region, short flags,
                                     VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [&](HWND window) {
        const RECT rect{update.left, update.top, update.right, update.bottom};
        return ::RedrawWindow(window, IsRectEmpty(&rect) ? nullptr : &rect, reinterpret_cast<HRGN>(region),
                              static_cast<UINT>(flags));
    });
}
STDMETHODIMP VexWindow::CloseWindow(hyper hWnd, VARIANT_BOOL* result) noexcept
{
    return does(hWnd, result, [](HWND window) { return ::CloseWindow(window); });
}

STDMETHODIMP VexWindow::GetCapture(hyper* result) noexcept
{
    return returning(result, [] { return asNumber(::GetCapture()); });
}
STDMETHODIMP VexWindow::SetCapture(hyper hWnd, hyper* result) noexcept
{
    return on(hWnd, result, [](HWND window) { return asNumber(::SetCapture(window)); });
}
STDMETHODIMP VexWindow::SetFocus(hyper hWnd, hyper* result) noexcept
{
    return on(hWnd, result, [](HWND window) { return asNumber(::SetFocus(window)); });
}
STDMETHODIMP VexWindow::GetActiveWindow(hyper* result) noexcept
{
    return returning(result, [] { return asNumber(::GetActiveWindow()); });
}
STDMETHODIMP VexWindow::SetActiveWindow(hyper hWnd, hyper* result) noexcept
{
    return on(hWnd, result, [](HWND window) { return asNumber(::SetActiveWindow(window)); });
}
STDMETHODIMP VexWindow::GetParent(hyper hWnd, hyper* result) noexcept
{
    return on(hWnd, result, [](HWND window) { return asNumber(::GetParent(window)); });
}
STDMETHODIMP VexWindow::SetParent(hyper hWnd, hyper parent, hyper* result) noexcept
{
    return on(hWnd, result, [&](HWND window) { return asNumber(::SetParent(window, asWindow(parent))); });
}

STDMETHODIMP VexWindow::MessageBox(hyper hWnd, BSTR text, BSTR caption, LONG flags, short* result) noexcept
{
    return returning(result, [&] {
        return MessageBoxW(asWindow(hWnd), textOf(text).c_str(), textOf(caption).c_str(), static_cast<UINT>(flags));
    });
}

STDMETHODIMP VexWindow::VexGetSystemMetrics(LONG index, LONG* result) noexcept
{
    return returning(result, [&] { return GetSystemMetrics(static_cast<int>(index)); });
}

STDMETHODIMP VexWindow::VexSleep(LONG seconds, LONG* result) noexcept
{
    constexpr LONG kLongest = 60 * 60; // nobody waits longer for a window that does not answer
    return returning(result, [&] {
        Sleep(1000 * static_cast<DWORD>(std::clamp<LONG>(seconds, 0, kLongest)));
        return 0;
    });
}

STDMETHODIMP VexWindow::VexGetCursorPosX(LONG* result) noexcept
{
    return returning(result, [] {
        POINT at{};
        GetCursorPos(&at);
        return at.x;
    });
}
STDMETHODIMP VexWindow::VexGetCursorPosY(LONG* result) noexcept
{
    return returning(result, [] {
        POINT at{};
        GetCursorPos(&at);
        return at.y;
    });
}

STDMETHODIMP VexWindow::OutPutString(BSTR text) noexcept
{
    return morvane::guarded([&] { OutputDebugStringW(textOf(text).c_str()); });
}

} // namespace ambrel
