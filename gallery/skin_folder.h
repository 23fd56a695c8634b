// The folder of --skin: packages that replace the library's own looks, and change while the gallery shows them.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <functional>
#include <map>
#include <set>
#include <string>

namespace gallery {

using morvane::ComPtr;

class SkinFolder {
public:
    /// Throws std::runtime_error when there is no such folder.
    SkinFolder(std::wstring folder, bool isDark);
    SkinFolder(const SkinFolder&) = delete;
    SkinFolder& operator=(const SkinFolder&) = delete;
    ~SkinFolder();

    /// Gives a control the look of a package: "2080.zip" or the folder "2080" ("2080.dark.zip", "2080.dark" in the dark
    /// palette). False when the folder has none or it is bad; the control is as it was then.
    bool apply(IVexRes& res, IVexControlBase& control, int package);

    enum class Change {
        InPlace, // controls look different, or what is wrong is different
        Rebuild, // controls must be made anew: a package came, went, or can be read for the first time
    };
    /// Calls `changed` from the thread's message loop after files of the folder changed.
    void watch(IVexRes& res, std::function<void(Change)> changed);

    /// What is wrong with packages now, by their paths: "shareres.xml:18:47: ...". Each was printed on stderr, too.
    const std::map<std::wstring, std::wstring>& problems() const { return m_problems; }
    /// A package's path as seen from the folder.
    std::wstring shortName(const std::wstring& path) const { return path.substr(m_folder.size() + 1); }

private:
    static void STDMETHODCALLTYPE fileChanged(void* context, const wchar_t* path, HRESULT status);
    std::wstring pathOf(int package) const;
    void note(const std::wstring& path, HRESULT status);
    void settled();

    std::wstring m_folder;
    bool m_isDark;
    std::map<int, std::wstring> m_paths;             // of the packages that were asked for; empty: there was none
    std::set<std::wstring> m_unworn;                 // bad when they were to be given
    std::map<std::wstring, std::wstring> m_problems; // by path
    ComPtr<IVexRes> m_watchedBy;
    std::function<void(Change)> m_changed;
    bool m_mustRebuild = false;
    bool m_hasNews = false;
};

} // namespace gallery
