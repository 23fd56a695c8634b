// What must be as before when every window and control is gone.
#pragma once

#include "host/windows_headers.h"

#include <string>

namespace morvane::soak {

class ControlLibrary;

struct Balance {
    long runtimeObjects = 0;
    long gdiHandles = 0; // without what belongs to fonts
    long gdiFonts = 0;
    long windows = 0; // of this process
    long timers = 0;  // that still tick
    long windowProperties = 0;

    static Balance now(HWND owner);
    /// What is more than before, in words; empty when nothing is.
    std::string excessOver(const Balance& before) const;
};

} // namespace morvane::soak
