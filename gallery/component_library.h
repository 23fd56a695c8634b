// The control library, used by the gallery as any application could: loaded from beside the program, nothing
// registered.
#pragma once

#include "frame/com/com_ptr.h"

#include <vector>

namespace gallery {

using morvane::ComPtr;

/// Loads Morvane.dll and makes the given classes known to this process, so that CoCreateInstance and the runtime find
/// them. Throws std::runtime_error when the library or a class is missing.
class ComponentLibrary {
public:
    explicit ComponentLibrary(const std::vector<CLSID>& classes);
    ComponentLibrary(const ComponentLibrary&) = delete;
    ComponentLibrary& operator=(const ComponentLibrary&) = delete;
    ~ComponentLibrary();

    HINSTANCE module() const { return m_module; }

private:
    HINSTANCE m_module = nullptr;
    std::vector<DWORD> m_registrations;
};

} // namespace gallery
