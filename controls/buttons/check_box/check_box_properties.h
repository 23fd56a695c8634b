// The property table of the check box. Names and order are the keys of saved skins.
#pragma once

#include "controls/buttons/check_box/check_box_logic.h"
#include "frame/parts/auto_size.h"
#include "frame/parts/caption.h"
#include "frame/parts/state_look.h"
#include "frame/properties.h"

#include <array>

namespace morvane {

struct CheckBoxProperties {
    struct ValueLooks {
        std::array<StateLook, kCheckStateCount> states; // by CheckState; the image is the box
        StateLook inactive;
    };
    std::array<ValueLooks, kCheckValueCount> values; // by CheckValue
    CaptionProps caption;
    BoolProp threeState;
    CursorProp cursor; // read by the framework
    BoolProp looksLikePushButton;
    LongProp graphicX; // pixels
    LongProp graphicY;
    AutoSize autoSize;
    BoolProp keepsValueOnClick;
    BoolProp stepsThroughHalf;

    void declare(PropertyTable& table);
};

} // namespace morvane
