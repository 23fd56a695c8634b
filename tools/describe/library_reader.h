// The type library of the controls, read the way automation clients read it.
#pragma once

#include "frame/com/bstr.h"
#include "frame/com/com_ptr.h"
#include "host/host.h"
#include "tools/describe/json_writer.h"

#include <vector>

namespace describe {

using morvane::Bstr;
using morvane::ComPtr;

/// A component class of the library.
struct ClassEntry {
    std::wstring name;
    CLSID id{};
    ComPtr<ITypeInfo> defaultInterface;
    ComPtr<ITypeInfo> events; // null for classes without events
};

/// Every component class, in the library's order.
std::vector<ClassEntry> classesOf(ITypeLib& library);

/// An interface's own methods, without those of the interface it derives from.
void writeInterface(JsonWriter& json, ITypeInfo& info);

/// All enumerations with their values.
void writeEnumerations(JsonWriter& json, ITypeLib& library);

std::wstring nameOf(ITypeInfo& info);
std::wstring guidText(const GUID& id);

} // namespace describe
