// The component classes of the module, in the order in which lookups and registration walk them.
#pragma once

#include "host/windows_headers.h"

#include <span>

namespace morvane {

/// Makes an object of a class: plain without an outer object, else as a part of it. See Instance::create.
using CreateInstanceFunction = HRESULT (*)(IUnknown* outer, REFIID iid, void** result);

/// One entry of the class table. Generated from class_table.toml.
struct ComponentClass {
    const wchar_t* name;
    CLSID clsid;
    UINT script;                   // number of the REGISTRY resource with its registration script
    bool inToolbox;                // designers offer it as a stand-alone control
    CreateInstanceFunction create; // null while the component is not built: the class is then not available
};

std::span<const ComponentClass> classTable() noexcept;

/// The category that marks the toolbox classes.
extern const GUID kToolboxCategory;
extern const GUID kTypeLibraryId;

} // namespace morvane
