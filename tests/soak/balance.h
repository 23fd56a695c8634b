// What must be as before when every window and control is gone.
#pragma once

#include "host/windows_headers.h"

#include <array>
#include <string>

namespace morvane::soak {

/// The kinds of GDI handles that are told apart.
enum class GdiKind { DeviceContext, Region, Bitmap, Font, PenOrBrush, Other };
inline constexpr std::size_t kGdiKinds = 6;

struct Balance {
    long runtimeObjects = 0;
    std::array<long, kGdiKinds> gdi{}; // device contexts without those that measure a font each
    long windows = 0;                  // of this process
    long timers = 0;                   // that still tick
    long windowProperties = 0;

    static Balance now(HWND owner);
    /// What is more than before, in words; empty when nothing is.
    std::string excessOver(const Balance& before) const;
};

/// What the windowing system makes when it is first needed and keeps for the process: a device context with its region
/// and bitmap for each that was ever in use at once, three entries for each of its cursors, a brush and a pen for each
/// of its colours. Made beforehand, nothing of it looks like a leak later.
void fillSystemCaches();

} // namespace morvane::soak
