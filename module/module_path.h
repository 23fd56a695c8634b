// Where this module lies on disk.
#pragma once

#include <string>

namespace morvane {

/// The full path of the module's file. Throws std::bad_alloc; empty when the system does not tell.
std::wstring modulePath();

/// The folder of a path, without the backslash at its end.
std::wstring folderOf(const std::wstring& path);

} // namespace morvane
