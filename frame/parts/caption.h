// A control's own text, whether it is shown, and its tool tip.
#pragma once

#include "frame/properties.h"

namespace morvane {

struct CaptionProps {
    StringProp text;
    BoolProp isShown;
    StringProp toolTip;

    /// What is to be drawn; empty while the text is hidden.
    Bstr shown() const { return isShown.isSet() ? text.value() : Bstr(); }
};

} // namespace morvane
