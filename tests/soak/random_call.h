// Calls of any interface method with odd arguments, as far as its contract lets anybody pass them.
#pragma once

#include "tests/soak/world.h"

namespace morvane::soak {

/// Why a method is never called with random arguments; null for all the others.
const char* reasonToSkip(const Method& method);

/// Calls one of the member's methods; what it gives back is released.
void callAnything(World& world, const Member& member);

} // namespace morvane::soak
