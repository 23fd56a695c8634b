// Noticing that the files of an open skin change.
#pragma once

#include "host/windows_headers.h"

#include <functional>
#include <string>

namespace ambrel {

/// Looks now and then, on the thread that made it, whether anything in a folder changed, and tells once things are
/// quiet. Needs that thread's message loop. `changed` may end the watch.
class SkinWatch {
public:
    SkinWatch(const std::wstring& folder, std::function<void()> changed);
    SkinWatch(const SkinWatch&) = delete;
    SkinWatch& operator=(const SkinWatch&) = delete;
    ~SkinWatch();

private:
    static void CALLBACK look(HWND, UINT, UINT_PTR timer, DWORD) noexcept;
    void look();

    std::function<void()> m_changed;
    HANDLE m_notification;
    UINT_PTR m_timer;
    bool m_pending = false;
};

} // namespace ambrel
