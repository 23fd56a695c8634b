// The framework's contract: interfaces, records and enumerations, generated from host/idl.
#pragma once

#include "host/windows_headers.h"

#include "host/idl/host.h"
