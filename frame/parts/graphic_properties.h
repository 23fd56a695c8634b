// Where the skin puts a control's graphic.
#pragma once

#include "frame/parts/graphic_layout.h"
#include "frame/properties.h"

namespace morvane {

struct GraphicProps {
    BoolProp isStacked;
    BoolProp isRightAligned;
    LongProp x; // pixels
    LongProp y;

    GraphicPlacement placement() const { return {isStacked.isSet(), isRightAligned.isSet(), x.value(), y.value()}; }
};

} // namespace morvane
