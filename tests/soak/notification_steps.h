// Notifications as a host may send them: known identifiers with parameters of the right sort, in any order.
#pragma once

#include "tests/soak/world.h"

namespace morvane::soak {

void notifyAnything(World& world, IVexControlBase& control);

} // namespace morvane::soak
