// The state sheet of a control: every state in both directions on its real background, as one picture.
#pragma once

#include "gallery/options.h"
#include "host/windows_headers.h"

namespace gallery {

/// Writes `<folder>\sheet-<name>-<scale>[-dark].png`. The process's exit code.
int shootStateSheet(const Options& options, HINSTANCE controls);

} // namespace gallery
