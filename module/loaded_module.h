// Morvane.dll as a client sees it, for tests: loaded from beside the test program, used through its entry points.
#pragma once

#include "controls/control_interfaces.h"
#include "frame/com/com_ptr.h"

#include <string>

namespace morvane::testing {

class LoadedModule {
public:
    LoadedModule() : m_module(LoadLibraryW(L"Morvane.dll")) {}
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule() { FreeLibrary(m_module); }

    HMODULE handle() const { return m_module; }

    HRESULT getClassObject(REFCLSID clsid, REFIID iid, void** result) const
    {
        return entry<decltype(&DllGetClassObject)>("DllGetClassObject")(clsid, iid, result);
    }
    HRESULT canUnloadNow() const { return entry<HRESULT(WINAPI*)()>("DllCanUnloadNow")(); }
    HRESULT registerServer() const { return entry<HRESULT(WINAPI*)()>("DllRegisterServer")(); }
    HRESULT unregisterServer() const { return entry<HRESULT(WINAPI*)()>("DllUnregisterServer")(); }

    ComPtr<IClassFactory> factory(REFCLSID clsid) const
    {
        ComPtr<IClassFactory> result;
        getClassObject(clsid, IID_IClassFactory, result.putVoid());
        return result;
    }

    std::wstring path() const
    {
        wchar_t buffer[MAX_PATH] = L"";
        GetModuleFileNameW(m_module, buffer, MAX_PATH);
        return buffer;
    }

private:
    template <class Function>
    Function entry(const char* name) const
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }

    HMODULE m_module;
};

} // namespace morvane::testing
