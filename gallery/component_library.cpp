#include "gallery/component_library.h"

#include <stdexcept>

namespace gallery {

ComponentLibrary::ComponentLibrary(const std::vector<CLSID>& classes)
{
    m_module = LoadLibraryW(L"Morvane.dll");
    if (!m_module)
        throw std::runtime_error("Morvane.dll is not beside the program");
    const auto getClassObject =
        reinterpret_cast<LPFNGETCLASSOBJECT>(reinterpret_cast<void*>(GetProcAddress(m_module, "DllGetClassObject")));
    for (const CLSID& classId : classes) {
        ComPtr<IUnknown> factory;
        DWORD registration = 0;
        if (!getClassObject || FAILED(getClassObject(classId, IID_IClassFactory, factory.putVoid())) ||
            FAILED(
                CoRegisterClassObject(classId, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &registration)))
            throw std::runtime_error("a control class is missing in Morvane.dll");
        m_registrations.push_back(registration);
    }
}

ComponentLibrary::~ComponentLibrary()
{
    for (const DWORD registration : m_registrations)
        CoRevokeClassObject(registration);
    // The module stays loaded until the process ends: windows that close late may still hold controls.
}

} // namespace gallery
