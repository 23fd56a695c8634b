// Ambrel.dll as an application sees it, for tests: loaded from beside the test program, used through its entry points.
#pragma once

#include "ambrel/ambrel.h"
#include "frame/com/com_ptr.h"
#include "host/host_classes.h"

namespace ambrel::testing {

class LoadedRuntime {
public:
    LoadedRuntime() : m_module(LoadLibraryW(L"Ambrel.dll")) {}
    LoadedRuntime(const LoadedRuntime&) = delete;
    LoadedRuntime& operator=(const LoadedRuntime&) = delete;
    ~LoadedRuntime() { FreeLibrary(m_module); }

    HMODULE handle() const { return m_module; }

#define AMBREL_ENTRY(name)                                                                                             \
    decltype(&::name) name() const                                                                                     \
    {                                                                                                                  \
        return entry<decltype(&::name)>(#name);                                                                        \
    }
    AMBREL_ENTRY(AmbrelRegisterClasses)
    AMBREL_ENTRY(AmbrelUnregisterClasses)
    AMBREL_ENTRY(AmbrelCreateRes)
    AMBREL_ENTRY(AmbrelRenderWindow)
    AMBREL_ENTRY(AmbrelApplySkin)
    AMBREL_ENTRY(AmbrelApplySkinFile)
    AMBREL_ENTRY(AmbrelWatchSkinFiles)
    AMBREL_ENTRY(AmbrelLiveObjects)
    AMBREL_ENTRY(AmbrelFreezeClock)
    AMBREL_ENTRY(AmbrelAdvanceClock)
    AMBREL_ENTRY(AmbrelRunClock)
    AMBREL_ENTRY(AmbrelSetTraceSink)
    AMBREL_ENTRY(DllCanUnloadNow)
    AMBREL_ENTRY(DllGetClassObject)
#undef AMBREL_ENTRY

private:
    template <class Function>
    Function entry(const char* name) const
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }

    HMODULE m_module;
};

} // namespace ambrel::testing
