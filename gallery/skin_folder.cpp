#include "gallery/skin_folder.h"

#include "ambrel/ambrel.h"
#include "frame/com/bstr.h"

#include <cstdio>
#include <stdexcept>

namespace gallery {

namespace {

bool exists(const std::wstring& path, bool isFolder)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) == isFolder;
}

/// Why the runtime's last call of this thread failed.
std::wstring lastError()
{
    ComPtr<IErrorInfo> info;
    morvane::Bstr text;
    if (GetErrorInfo(0, info.put()) == S_OK)
        info->GetDescription(text.put());
    return text.empty() ? L"it cannot be used" : text.str();
}

std::string utf8(const std::wstring& text)
{
    const int size = static_cast<int>(text.size());
    std::string result(text.size() * 3, '\0');
    result.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(),
                                                               static_cast<int>(result.size()), nullptr, nullptr)));
    return result;
}

std::wstring withoutSlash(std::wstring folder)
{
    while (folder.size() > 1 && (folder.back() == L'\\' || folder.back() == L'/'))
        folder.pop_back();
    return folder;
}

} // namespace

SkinFolder::SkinFolder(std::wstring folder, bool isDark) : m_folder(withoutSlash(std::move(folder))), m_isDark(isDark)
{
    if (!exists(m_folder, true))
        throw std::runtime_error("there is no folder " + utf8(m_folder));
}

SkinFolder::~SkinFolder()
{
    if (m_watchedBy)
        AmbrelWatchSkinFiles(m_watchedBy.get(), nullptr, nullptr, nullptr);
}

std::wstring SkinFolder::pathOf(int package) const
{
    const std::wstring stem = m_folder + L'\\' + std::to_wstring(package) + (m_isDark ? L".dark" : L"");
    if (exists(stem + L".zip", false))
        return stem + L".zip";
    return exists(stem, true) ? stem : std::wstring();
}

bool SkinFolder::apply(IVexRes& res, IVexControlBase& control, int package)
{
    const std::wstring path = pathOf(package);
    m_paths[package] = path;
    if (path.empty())
        return false;
    const HRESULT status = AmbrelApplySkinFile(&res, &control, path.c_str());
    note(path, status);
    if (FAILED(status))
        m_unworn.insert(path);
    return status == S_OK;
}

void SkinFolder::watch(IVexRes& res, std::function<void(Change)> changed)
{
    m_changed = std::move(changed);
    if (SUCCEEDED(AmbrelWatchSkinFiles(&res, m_folder.c_str(), &SkinFolder::fileChanged, this)))
        m_watchedBy = ComPtr<IVexRes>(&res);
}

void SkinFolder::note(const std::wstring& path, HRESULT status)
{
    const auto known = m_problems.find(path);
    if (SUCCEEDED(status)) {
        if (known == m_problems.end())
            return;
        m_problems.erase(known);
        std::fprintf(stderr, "gallery: %s is in use again\n", utf8(shortName(path)).c_str());
        m_hasNews = true;
        return;
    }
    const std::wstring text = lastError();
    if (known != m_problems.end() && known->second == text)
        return;
    m_problems[path] = text;
    std::fprintf(stderr, "%s\n", utf8(path + L'\\' + text).c_str());
    std::fflush(stderr);
    m_hasNews = true;
}

void STDMETHODCALLTYPE SkinFolder::fileChanged(void* context, const wchar_t* path, HRESULT status)
{
    auto& folder = *static_cast<SkinFolder*>(context);
    try {
        if (!path)
            return folder.settled();
        // What is gone is no mistake: the library's own look takes its place.
        const bool isThere = exists(path, false) || exists(path, true);
        folder.note(path, isThere ? status : S_OK);
        folder.m_hasNews = folder.m_hasNews || status == S_OK;
        folder.m_mustRebuild = folder.m_mustRebuild || (status == S_OK && folder.m_unworn.erase(path) != 0);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "gallery: %s\n", problem.what());
    }
}

void SkinFolder::settled()
{
    for (const auto& [package, path] : m_paths)
        m_mustRebuild = m_mustRebuild || pathOf(package) != path;
    if (m_mustRebuild) {
        m_hasNews = m_mustRebuild = false;
        m_changed(Change::Rebuild);
    } else if (m_hasNews) {
        m_hasNews = false;
        m_changed(Change::InPlace);
    }
}

} // namespace gallery
