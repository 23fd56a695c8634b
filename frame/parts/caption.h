// A control's own text and whether it is shown.
#pragma once

#include "frame/properties.h"

namespace morvane {

struct CaptionProps {
    StringProp text;
    BoolProp isShown;

    /// What is to be drawn; empty while the text is hidden.
    Bstr shown() const { return isShown.isSet() ? text.value() : Bstr(); }
};

} // namespace morvane
