// The entry points of the component server.
#include "ambrel/module/class_factory.h"

#include "frame/com/module_lock.h"
#include "frame/com/result.h"
#include "frame/com/type_library.h"

#include <array>
#include <string>

namespace {

using Text = std::array<wchar_t, 40>;

std::wstring keyOf(REFCLSID id)
{
    Text text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return L"CLSID\\" + std::wstring(text.data());
}

bool setValue(const std::wstring& key, const wchar_t* name, const std::wstring& value)
{
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, value.c_str(), bytes) == ERROR_SUCCESS;
}

bool registerClass(const ambrel::HostClass& each, const std::wstring& path)
{
    const std::wstring key = keyOf(each.id);
    const std::wstring progId = each.progId ? each.progId : L"";
    return setValue(key, nullptr, each.name) && setValue(key + L"\\InprocServer32", nullptr, path) &&
           setValue(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
           (progId.empty() || (setValue(key + L"\\ProgID", nullptr, progId) && setValue(progId, nullptr, each.name) &&
                               setValue(progId + L"\\CLSID", nullptr, key.substr(key.find(L'{')))));
}

} // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** result)
{
    return morvane::filling(result, [&](void*& place) -> HRESULT {
        const auto factory = ambrel::makeClassFactory(clsid);
        return factory ? factory->QueryInterface(iid, &place) : CLASS_E_CLASSNOTAVAILABLE;
    });
}

STDAPI DllCanUnloadNow()
{
    return morvane::ModuleLock::count() != 0 ? S_FALSE : S_OK;
}

STDAPI DllUnregisterServer()
{
    return morvane::guarded([] {
        for (const ambrel::HostClass& each : ambrel::hostClasses()) {
            RegDeleteTreeW(HKEY_CLASSES_ROOT, keyOf(each.id).c_str());
            if (each.progId)
                RegDeleteTreeW(HKEY_CLASSES_ROOT, each.progId);
        }
    });
}

STDAPI DllRegisterServer()
{
    return morvane::guarded([] {
        std::array<wchar_t, MAX_PATH> path{};
        const DWORD length = GetModuleFileNameW(morvane::thisModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0 || length == path.size())
            return E_FAIL;
        for (const ambrel::HostClass& each : ambrel::hostClasses()) {
            if (!registerClass(each, path.data())) {
                DllUnregisterServer(); // nothing stays half done
                return SELFREG_E_CLASS;
            }
        }
        return S_OK;
    });
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* reserved)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    // At the end of the process the automation library may be gone already; only a real unload gives its objects back.
    if (reason == DLL_PROCESS_DETACH && !reserved)
        morvane::releaseTypeInfos();
    return TRUE;
}
