// Which installed typeface stands in for one that is missing or that cannot be drawn well.
#pragma once

#include "host/windows_headers.h"

#include <span>

namespace ambrel {

/// Replaces the face name where needed: interface fonts of the platform that are not installed, and Tahoma where it is
/// only a stand-in whose outlines were made for ready-drawn small sizes.
void resolveFace(LOGFONTW& font);

bool isFaceInstalled(const wchar_t* face);

/// Faces that together have the characters of most scripts, in the order in which they are asked.
std::span<const wchar_t* const> fallbackFaces() noexcept;

} // namespace ambrel
