// Operations of an interface as a type library describes them: enough to call any of them with arguments of the right
// size.
#pragma once

#include "frame/com/com_ptr.h"

#include <cstddef>
#include <string>
#include <vector>

namespace morvane::testing {

/// A parameter as it is passed on this platform.
struct Parameter {
    std::size_t size = 0;   // bytes of the value
    bool byAddress = false; // a record that does not fit a register: the callee gets the address of a copy
};

struct Operation {
    std::string name;                  // with get_ or put_ in front for properties
    std::size_t slot = 0;              // in the table of functions
    std::vector<Parameter> parameters; // the result's place included
};

/// The operations that an interface adds to the one it derives from. Throws std::runtime_error when the library cannot
/// be read.
std::vector<Operation> operationsOf(ITypeLib& library, REFIID iid);

/// A class of the library with its default interface.
struct LibraryClass {
    std::string name;
    CLSID clsid;
    IID defaultInterface;
    bool isControl; // the default interface derives from IVexControlBase
};

std::vector<LibraryClass> classesOf(ITypeLib& library);

/// The type library in a module's resources.
ComPtr<ITypeLib> typeLibraryOf(const std::wstring& modulePath);

} // namespace morvane::testing
