// What the property table of an object says about the keyboard. The runtime knows no control's class; it goes by the
// names of groups and properties, which every control that wants to be reached this way shares:
//
//     Hotkey   Hotkey1, Hotkey2 (hot keys), IsEnter, IsBackspace (Boolean)
//     Text     Text (string), ShowText (Boolean), with an ampersand before the access key
//     Group    GroupID (number): objects of which one is chosen; 0 for those of one parent
//
// Values are read when a key is pressed: nothing has to be told that one changed. None of these run foreign code.
#pragma once

#include "ambrel/objects/focus_order.h"
#include "ambrel/objects/skin_object_core.h"
#include "ambrel/window/input_router.h"

namespace ambrel {

// Bits of IVexHotkey's modifiers; those of the platform's hot-key control.
inline constexpr long kHotkeyShift = 1;
inline constexpr long kHotkeyControl = 2;
inline constexpr long kHotkeyAlt = 4;

bool isHotKey(IVexHotkey* hotkey, const KeyFact& key) noexcept;

/// Whether one of the object's hot-key properties is this combination.
bool hasHotKeyProperty(SkinObjectCore& core, const KeyFact& key);

/// Whether any of them has a key at all.
bool hasAnyHotKeyProperty(SkinObjectCore& core);

enum class PlainKey { Enter, Backspace };
/// Whether the property says that the key presses the object from anywhere.
bool isPressedByProperty(SkinObjectCore& core, PlainKey key);

/// Whether the object is of a kind that the Enter key presses: one that could be given it.
bool offersEnter(SkinObjectCore& core);

/// The access key in the object's caption, in upper case. 0 when it has none, or when it is not shown: without a text
/// style, or with one that shows ampersands as they are.
wchar_t shownAccessKey(SkinObjectCore& core);
wchar_t upperCase(wchar_t character) noexcept;

/// Nothing for an object that stands alone.
std::optional<FocusGroup> focusGroupOf(SkinObjectCore& core);

} // namespace ambrel
