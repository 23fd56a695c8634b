// The module's own type library, from which IDispatch answers.
#pragma once

#include "frame/com/com_ptr.h"

namespace morvane {

/// The type information of one interface from the library in this module's resources. Loaded at the first call, kept
/// for the life of the module, found without any registration.
HRESULT typeInfoOf(REFIID iid, ComPtr<ITypeInfo>& result) noexcept;

/// Drops every cached type information; called when the module is unloaded.
void releaseTypeInfos() noexcept;

} // namespace morvane
