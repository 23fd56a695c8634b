// Creating the framework's objects that every control is made of.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <memory>

namespace morvane {

/// The framework's class objects, asked for once and shared by all controls that live: looking a class up costs far
/// more than creating its object. The last control lets go of them, so a host can come and go between controls.
class HostClasses {
public:
    /// The ones the living controls of this thread share; made for the first.
    static std::shared_ptr<HostClasses> shared();

    /// Null when the framework cannot make one.
    ComPtr<IVexControlBase> createInnerBase() { return create<IVexControlBase>(m_innerBase); }
    ComPtr<IVexObjectDraw> createObjectDraw() { return create<IVexObjectDraw>(m_objectDraw); }

    HostClasses();

private:
    template <class Interface>
    static ComPtr<Interface> create(const ComPtr<IClassFactory>& factory)
    {
        ComPtr<Interface> object;
        if (factory)
            factory->CreateInstance(nullptr, iidOf<Interface>(), object.putVoid());
        return object;
    }

    DWORD m_thread;
    ComPtr<IClassFactory> m_innerBase;
    ComPtr<IClassFactory> m_objectDraw;
};

} // namespace morvane
