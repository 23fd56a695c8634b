// The steps of the soak: each does one random thing to the world.
#pragma once

#include "tests/soak/world.h"

namespace morvane::soak {

/// One random step. Not nested; what runs in the middle of the controls' work is interruptStep.
void anyStep(World& world, std::uint64_t number);

/// A small step from inside a callback or a notification: often one that ends something.
void interruptStep(World& world);

} // namespace morvane::soak
