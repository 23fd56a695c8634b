// The one place that uses what the C++ standard does not have: interface identifiers attached to types, and the address
// of the module that holds this code. Both compilers we support spell them the same way.
#pragma once

#include "host/windows_headers.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace morvane {

/// The identifier of an interface, as its IDL gives it.
template <class Interface>
const IID& iidOf() noexcept
{
    return __uuidof(Interface);
}

/// The module (DLL or EXE) that this code was linked into.
inline HINSTANCE thisModule() noexcept
{
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

} // namespace morvane
