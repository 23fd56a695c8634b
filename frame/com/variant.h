// A VARIANT that is cleared.
#pragma once

#include "host/host.h"

namespace morvane {

/// A VARIANT, empty at first, that owns what it holds.
struct Variant : VARIANT {
    Variant() noexcept { VariantInit(this); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(this); }
};

} // namespace morvane
