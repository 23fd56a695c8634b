// Icons, cursors and packages in the module's resources.
#pragma once

#include "base/geometry.h"
#include "host/windows_headers.h"

namespace morvane {

/// The module found by its own file name, as controls name the place of their resources; null while it is not loaded
/// under that name.
HMODULE namedModule() noexcept;

/// The caller owns the icon; null when the module has none of that number.
HICON loadModuleIcon(WORD id, Size size) noexcept;

/// A cursor the system shares; not to be destroyed. Null when the module has none of that number.
HCURSOR loadModuleCursor(WORD id) noexcept;

} // namespace morvane
