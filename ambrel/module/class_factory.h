// The class objects of the runtime: the five host classes that controls create, and the resource object for scripts.
#pragma once

#include "frame/com/com_ptr.h"

#include <span>

namespace ambrel {

struct HostClass {
    const CLSID& id;
    const wchar_t* name;   // for people who look into the registry
    const wchar_t* progId; // null for what only controls create
    HRESULT (*create)(IUnknown* outer, REFIID iid, void** result) noexcept;
};

std::span<const HostClass> hostClasses() noexcept;

/// A class object; null for classes that are not the runtime's. Throws std::bad_alloc.
morvane::ComPtr<IClassFactory> makeClassFactory(REFCLSID id);

} // namespace ambrel
