// From an interface pointer to our own object behind it.
#pragma once

#include "frame/com/com_ptr.h"

namespace ambrel {

/// Our own object behind an interface; null for null and for objects that are not ours. `Class` has a private
/// identifier `kImplementationIid`, for which its findInterface answers the pointer of `Class::ImplementedInterface`.
template <class Class>
morvane::ComPtr<Class> implementationOf(IUnknown* object) noexcept
{
    void* found = nullptr;
    if (!object || FAILED(object->QueryInterface(Class::kImplementationIid, &found)))
        return {};
    return morvane::ComPtr<Class>::adopt(
        static_cast<Class*>(static_cast<typename Class::ImplementedInterface*>(found)));
}

} // namespace ambrel
