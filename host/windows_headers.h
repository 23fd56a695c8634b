// The platform's headers that everything above host/ needs, precompiled once.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

// The platform's headers redefine these words as macros; they are method names of the contract.
#undef DrawText
#undef GetWindowText
#undef MessageBox
#undef PostMessage
#undef SendMessage
#undef SetWindowText
#undef CreateWindow
#undef GetObject
