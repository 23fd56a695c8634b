// Carries out registration scripts.
#pragma once

#include "module/registration/key_store.h"

namespace morvane::registration {

enum class Mode { Register, Unregister };

/// Carries out a whole script or nothing of it: when the store refuses a step, what was done is undone and the
/// StoreError goes on to the caller. Keys that unregistration does not find are no failure.
void run(const Script& script, Mode mode, KeyStore& store);

/// How a script's value is kept in the registry: strings as terminated UTF-16, numbers as four bytes.
StoredValue encode(const Data& data);

} // namespace morvane::registration
