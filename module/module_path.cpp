#include "module/module_path.h"

#include "frame/com/compiler.h"

namespace morvane {

std::wstring modulePath()
{
    constexpr std::size_t kLongestPath = 32768; // of the system, in characters
    for (std::wstring path(MAX_PATH, L'\0'); path.size() <= kLongestPath; path.resize(path.size() * 2)) {
        const DWORD length = GetModuleFileNameW(thisModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0)
            break;
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
    }
    return {};
}

std::wstring folderOf(const std::wstring& path)
{
    const std::size_t last = path.find_last_of(L"\\/");
    return last == std::wstring::npos ? std::wstring() : path.substr(0, last);
}

} // namespace morvane
