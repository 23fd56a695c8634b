// What the module writes to the registry, and removes from it.
#pragma once

#include "module/class_table.h"
#include "module/registration/registrar.h"

namespace morvane {

/// Registers the classes in the order of the table, each with its script and its category, then the type library. Stops
/// at the first failure and returns it.
HRESULT registerClasses(std::span<const ComponentClass> table);

/// Takes the same back in the same order: of each class first the category, then the script's keys; the type library
/// last.
HRESULT unregisterClasses(std::span<const ComponentClass> table);

/// Carries out one REGISTRY resource of this module. HRESULT of the system's error when there is no such resource or
/// when the registry refuses; a script that cannot be understood is ERROR_BAD_FORMAT with the reason in the thread's
/// error info.
HRESULT runScript(UINT script, registration::Mode mode);

} // namespace morvane
