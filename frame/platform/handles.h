// Owning types for the system handles that controls and the runtime use: each is given back exactly once.
#pragma once

#include "host/windows_headers.h"

#include <utility>

namespace morvane {

/// Owns a handle that one function gives back. Movable, not copyable.
template <class Handle, auto Close>
class UniqueHandle {
public:
    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Handle handle) noexcept : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
    ~UniqueHandle() { reset(); }

    UniqueHandle& operator=(UniqueHandle&& other) noexcept
    {
        reset(std::exchange(other.m_handle, nullptr));
        return *this;
    }

    void reset(Handle handle = nullptr) noexcept
    {
        if (Handle old = std::exchange(m_handle, handle))
            Close(old);
    }

    Handle get() const noexcept { return m_handle; }
    Handle detach() noexcept { return std::exchange(m_handle, nullptr); }
    explicit operator bool() const noexcept { return m_handle != nullptr; }

private:
    Handle m_handle = nullptr;
};

namespace detail {
template <class Handle>
void deleteGdiObject(Handle handle) noexcept
{
    DeleteObject(handle);
}
inline void deleteDc(HDC dc) noexcept
{
    DeleteDC(dc);
}
inline void destroyIcon(HICON icon) noexcept
{
    DestroyIcon(icon);
}
inline void destroyCursor(HCURSOR cursor) noexcept
{
    DestroyCursor(cursor);
}
inline void destroyMenu(HMENU menu) noexcept
{
    DestroyMenu(menu);
}
inline void destroyWindow(HWND window) noexcept
{
    DestroyWindow(window);
}
inline void closeHandle(HANDLE handle) noexcept
{
    CloseHandle(handle);
}
inline void unhook(HHOOK hook) noexcept
{
    UnhookWindowsHookEx(hook);
}
} // namespace detail

using UniqueBitmap = UniqueHandle<HBITMAP, &detail::deleteGdiObject<HBITMAP>>;
using UniqueFont = UniqueHandle<HFONT, &detail::deleteGdiObject<HFONT>>;
using UniqueBrush = UniqueHandle<HBRUSH, &detail::deleteGdiObject<HBRUSH>>;
using UniquePen = UniqueHandle<HPEN, &detail::deleteGdiObject<HPEN>>;
using UniqueRegion = UniqueHandle<HRGN, &detail::deleteGdiObject<HRGN>>;
using UniqueMemoryDc = UniqueHandle<HDC, &detail::deleteDc>;
using UniqueIcon = UniqueHandle<HICON, &detail::destroyIcon>;
using UniqueCursor = UniqueHandle<HCURSOR, &detail::destroyCursor>;
using UniqueMenu = UniqueHandle<HMENU, &detail::destroyMenu>;
using UniqueWindow = UniqueHandle<HWND, &detail::destroyWindow>;
using UniqueFile = UniqueHandle<HANDLE, &detail::closeHandle>;
using UniqueHook = UniqueHandle<HHOOK, &detail::unhook>;

/// A window's (or, for null, the screen's) device context for the length of a scope.
class WindowDc {
public:
    explicit WindowDc(HWND window) noexcept : m_window(window), m_dc(GetDC(window)) {}
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    ~WindowDc()
    {
        if (m_dc)
            ReleaseDC(m_window, m_dc);
    }
    HDC get() const noexcept { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

/// Puts a GDI object into a device context and the former one back at the end of the scope.
class SelectedObject {
public:
    SelectedObject(HDC dc, HGDIOBJ object) noexcept : m_dc(dc), m_former(SelectObject(dc, object)) {}
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;
    ~SelectedObject()
    {
        if (m_former)
            SelectObject(m_dc, m_former);
    }

private:
    HDC m_dc;
    HGDIOBJ m_former;
};

} // namespace morvane
