// A window of the runtime for tests that need one.
#pragma once

#include "ambrel/ambrel.h"
#include "frame/com/com_ptr.h"

namespace ambrel::testing_objects {

/// The runtime's classes, found by CoCreateInstance for as long as it lives.
class RuntimeClasses {
public:
    RuntimeClasses() { AmbrelRegisterClasses(); }
    RuntimeClasses(const RuntimeClasses&) = delete;
    RuntimeClasses& operator=(const RuntimeClasses&) = delete;
    ~RuntimeClasses() { AmbrelUnregisterClasses(); }
};

/// A root with a hidden host window of 400 by 300 pixels, made the way an application makes it.
morvane::ComPtr<IAmbrel> openTestWindow();

} // namespace ambrel::testing_objects
