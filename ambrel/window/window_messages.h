// What a window of the runtime answers besides the platform's own messages.
#pragma once

#include "host/windows_headers.h"

namespace ambrel {

/// Sets the tool tip: wParam the text (const wchar_t*) or 0, lParam the control it belongs to.
inline constexpr UINT kToolTipMessage = 3464;

/// A group of radio boxes has another choice: wParam the group's number, lParam the control.
inline constexpr UINT kGroupChoiceMessage = 3025;

// The runtime's own. The numbers lie outside of what controls use.
inline constexpr UINT kSceneChangedMessage = WM_APP + 0x3A51;
inline constexpr UINT kGroundChangedMessage = WM_APP + 0x3A52; // what a parent shows beneath its child windows
/// From a child window that shows what its parent shows: it wants to hear of changes.
inline constexpr UINT kGroundNeededMessage = WM_APP + 0x3A53;
inline constexpr UINT_PTR kTipTimer = 0x41'4D'42'01;

} // namespace ambrel
