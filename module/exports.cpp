// The entry points of the component server. Marshalling is asked first, the class table second.
#include "module/class_objects.h"
#include "module/server_registration.h"

#include "frame/com/module_lock.h"
#include "frame/com/result.h"
#include "frame/com/type_library.h"

// The generated marshalling part under names of its own; see marshalling.cmake.
extern "C" {
HRESULT WINAPI PrxDllGetClassObject(REFCLSID clsid, REFIID iid, void** result);
HRESULT WINAPI PrxDllCanUnloadNow();
HRESULT WINAPI PrxDllRegisterServer();
HRESULT WINAPI PrxDllUnregisterServer();
BOOL WINAPI PrxDllMain(HINSTANCE module, DWORD reason, void* reserved);
}

namespace morvane {

namespace {

/// The module's one set of class objects: made when the module is loaded, gone when it is unloaded.
ClassObjects g_classObjects(classTable());

} // namespace

} // namespace morvane

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** result)
{
    using namespace morvane;
    return filling(result, [&](void*& place) {
        const HRESULT marshalling = PrxDllGetClassObject(clsid, iid, &place);
        return SUCCEEDED(marshalling) ? marshalling : g_classObjects.find(clsid, iid, &place);
    });
}

STDAPI DllCanUnloadNow()
{
    // Only a failure of the marshalling part counts: its proxies do not keep the module loaded.
    const HRESULT marshalling = PrxDllCanUnloadNow();
    if (FAILED(marshalling))
        return marshalling;
    return morvane::ModuleLock::count() != 0 ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer()
{
    const HRESULT marshalling = PrxDllRegisterServer();
    if (FAILED(marshalling))
        return marshalling;
    return morvane::guarded([] { return morvane::registerClasses(morvane::classTable()); });
}

STDAPI DllUnregisterServer()
{
    PrxDllUnregisterServer(); // whatever it answers, the classes must go
    return morvane::guarded([] { return morvane::unregisterClasses(morvane::classTable()); });
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void* reserved)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    // At the end of the process the automation library may be gone already; only a real unload gives its objects back.
    if (reason == DLL_PROCESS_DETACH && !reserved)
        morvane::releaseTypeInfos();
    return PrxDllMain(module, reason, reserved);
}
