// A window of the runtime for tests that need one.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

namespace ambrel::testing_objects {

/// A root with a hidden host window of 400 by 300 pixels, made the way an application makes it.
morvane::ComPtr<IAmbrel> openTestWindow();

} // namespace ambrel::testing_objects
