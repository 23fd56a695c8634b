// Instantiates the headers once, so that each compiles on its own.
#include "base/axis.h"
#include "base/geometry.h"
#include "base/rounding.h"
