// Steps over what lies around the controls: the resource object with its skin, property groups, a second window.
#pragma once

#include "tests/soak/world.h"

namespace morvane::soak {

/// Any method of the resource object.
void resourceCallStep(World& world);
/// Opens, saves, closes and changes the skin of the whole application, good packages and bad ones.
void skinOfAllStep(World& world);
/// Colour cases, language, design status, the record of a drag.
void sharedStateStep(World& world);
/// Any method of a control's property group, its groups and properties put elsewhere, copied, read and written.
void groupCallStep(World& world);
void groupStep(World& world);
/// A control with everything beneath it goes to another parent, perhaps of the other window.
void moveStep(World& world);

} // namespace morvane::soak
