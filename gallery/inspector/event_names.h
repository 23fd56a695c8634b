// Names of notifications and window messages for the log.
#pragma once

namespace gallery {

/// Null for a number without a known name.
const wchar_t* eventName(long id);

} // namespace gallery
