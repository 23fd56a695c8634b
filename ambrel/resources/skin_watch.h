// Noticing that the files of an open skin change.
#pragma once

#include "host/windows_headers.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace ambrel {

/// Looks now and then, on the thread that made it, whether anything in a folder or the folders directly in it changed,
/// and tells once things are quiet. Needs that thread's message loop. `changed` may end the watch.
class SkinWatch {
public:
    SkinWatch(const std::wstring& folder, std::function<void()> changed);
    SkinWatch(const SkinWatch&) = delete;
    SkinWatch& operator=(const SkinWatch&) = delete;
    ~SkinWatch();

private:
    static void CALLBACK look(HWND, UINT, UINT_PTR timer, DWORD) noexcept;
    void look();
    void listen();
    void stopListening();

    std::wstring m_folder;
    std::function<void()> m_changed;
    std::uint64_t m_made;                // see whenMade
    std::vector<HANDLE> m_notifications; // of the folder and those in it
    UINT_PTR m_timer = 0;
    bool m_pending = false;
};

/// Only a folder can be watched.
bool isFolder(const std::wstring& path) noexcept;

} // namespace ambrel
