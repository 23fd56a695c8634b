#include "ambrel/resources/skin_watch.h"

#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

namespace ambrel {

namespace {

constexpr UINT kLookEveryMs = 300;
constexpr std::size_t kMostFolders = 64;
constexpr DWORD kChanges = FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME;

/// Tells a folder from another one that comes to its place; 0 when there is none.
std::uint64_t whenMade(const std::wstring& folder) noexcept
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(folder.c_str(), GetFileExInfoStandard, &data))
        return 0;
    return std::uint64_t(data.ftCreationTime.dwHighDateTime) << 32 | data.ftCreationTime.dwLowDateTime;
}

/// Timers without a window know only their number.
std::map<UINT_PTR, SkinWatch*>& watches()
{
    static std::map<UINT_PTR, SkinWatch*> all;
    return all;
}

} // namespace

SkinWatch::SkinWatch(const std::wstring& folder, std::function<void()> changed)
    : m_folder(folder), m_changed(std::move(changed)), m_made(whenMade(folder))
{
    listen();
    if (!m_notifications.empty())
        m_timer = SetTimer(nullptr, 0, kLookEveryMs, &SkinWatch::look);
    if (m_timer)
        watches()[m_timer] = this;
}

SkinWatch::~SkinWatch()
{
    if (m_timer) {
        KillTimer(nullptr, m_timer);
        watches().erase(m_timer);
    }
    stopListening();
}

/// Each folder by itself: a notification of a whole tree does not reach everywhere what happens further down.
void SkinWatch::listen()
{
    stopListening();
    std::vector<std::wstring> folders{m_folder};
    std::error_code problem;
    for (std::filesystem::directory_iterator each(m_folder, problem), end; !problem && each != end;
         each.increment(problem)) {
        std::error_code unreadable;
        if (each->is_directory(unreadable) && folders.size() < kMostFolders)
            folders.push_back(each->path().wstring());
    }
    for (const std::wstring& folder : folders) {
        const HANDLE notification = FindFirstChangeNotificationW(folder.c_str(), FALSE, kChanges);
        if (notification != INVALID_HANDLE_VALUE)
            m_notifications.push_back(notification);
    }
}

void SkinWatch::stopListening()
{
    for (const HANDLE notification : m_notifications)
        FindCloseChangeNotification(notification);
    m_notifications.clear();
}

void CALLBACK SkinWatch::look(HWND, UINT, UINT_PTR timer, DWORD) noexcept
{
    if (const auto found = watches().find(timer); found != watches().end())
        found->second->look();
}

void SkinWatch::look()
{
    // A folder that was moved away takes its notifications along; another one may come to its place.
    const std::uint64_t made = whenMade(m_folder);
    bool changed = std::exchange(m_made, made) != made;
    for (const HANDLE notification : m_notifications)
        changed = changed || WaitForSingleObject(notification, 0) == WAIT_OBJECT_0;
    if (changed)
        listen(); // to folders that came, too; what changes until then is read with the rest
    // An editor writes several files, or one in several steps: one look without a change is waited for.
    if (changed) {
        m_pending = true;
    } else if (m_pending) {
        m_pending = false;
        const auto tell = m_changed; // this may end inside
        tell();
    }
}

bool isFolder(const std::wstring& path) noexcept
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace ambrel
