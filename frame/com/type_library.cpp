#include "frame/com/type_library.h"

#include "frame/com/result.h"

#include <cstring>
#include <map>
#include <mutex>

namespace morvane {

namespace {

struct IidLess {
    bool operator()(const IID& a, const IID& b) const noexcept { return std::memcmp(&a, &b, sizeof(IID)) < 0; }
};

/// The library and what was asked of it so far.
class TypeLibraryCache {
public:
    HRESULT find(REFIID iid, ComPtr<ITypeInfo>& result)
    {
        const std::scoped_lock lock(m_mutex);
        if (const auto known = m_infos.find(iid); known != m_infos.end()) {
            result = known->second;
            return S_OK;
        }
        const HRESULT loaded = load();
        if (FAILED(loaded))
            return loaded;
        const HRESULT found = m_library->GetTypeInfoOfGuid(iid, result.put());
        if (SUCCEEDED(found))
            m_infos.emplace(iid, result);
        return found;
    }

    void clear() noexcept
    {
        const std::scoped_lock lock(m_mutex);
        m_infos.clear();
        m_library.reset();
    }

private:
    HRESULT load()
    {
        if (m_library)
            return S_OK;
        wchar_t path[MAX_PATH];
        const DWORD length = GetModuleFileNameW(thisModule(), path, MAX_PATH);
        if (length == 0 || length == MAX_PATH)
            return TYPE_E_CANTLOADLIBRARY;
        return LoadTypeLibEx(path, REGKIND_NONE, m_library.put());
    }

    std::mutex m_mutex;
    ComPtr<ITypeLib> m_library;
    std::map<IID, ComPtr<ITypeInfo>, IidLess> m_infos;
};

TypeLibraryCache& cache()
{
    // Never destroyed: at process exit the automation library may be gone before us.
    static TypeLibraryCache& instance = *new TypeLibraryCache;
    return instance;
}

} // namespace

HRESULT typeInfoOf(REFIID iid, ComPtr<ITypeInfo>& result) noexcept
{
    return guarded([&] { return cache().find(iid, result); });
}

void releaseTypeInfos() noexcept
{
    cache().clear();
}

} // namespace morvane
