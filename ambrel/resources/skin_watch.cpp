#include "ambrel/resources/skin_watch.h"

#include <map>

namespace ambrel {

namespace {

constexpr UINT kLookEveryMs = 300;
constexpr DWORD kChanges = FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME;

/// Timers without a window know only their number.
std::map<UINT_PTR, SkinWatch*>& watches()
{
    static std::map<UINT_PTR, SkinWatch*> all;
    return all;
}

} // namespace

SkinWatch::SkinWatch(const std::wstring& folder, std::function<void()> changed)
    : m_changed(std::move(changed)), m_notification(FindFirstChangeNotificationW(folder.c_str(), TRUE, kChanges)),
      m_timer(m_notification != INVALID_HANDLE_VALUE ? SetTimer(nullptr, 0, kLookEveryMs, &SkinWatch::look) : 0)
{
    if (m_timer)
        watches()[m_timer] = this;
}

SkinWatch::~SkinWatch()
{
    if (m_timer) {
        KillTimer(nullptr, m_timer);
        watches().erase(m_timer);
    }
    if (m_notification != INVALID_HANDLE_VALUE)
        FindCloseChangeNotification(m_notification);
}

void CALLBACK SkinWatch::look(HWND, UINT, UINT_PTR timer, DWORD) noexcept
{
    if (const auto found = watches().find(timer); found != watches().end())
        found->second->look();
}

void SkinWatch::look()
{
    bool changed = false;
    while (WaitForSingleObject(m_notification, 0) == WAIT_OBJECT_0) {
        changed = true;
        if (!FindNextChangeNotification(m_notification))
            break;
    }
    // An editor writes several files, or one in several steps: one look without a change is waited for.
    if (changed) {
        m_pending = true;
    } else if (m_pending) {
        m_pending = false;
        const auto tell = m_changed; // this may end inside
        tell();
    }
}

} // namespace ambrel
