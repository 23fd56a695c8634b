// The property table of the check box. Names and order are the keys of saved skins.
#pragma once

#include "controls/buttons/check_box/check_box_logic.h"
#include "frame/parts/auto_size.h"
#include "frame/properties.h"

#include <array>

namespace morvane {

struct CheckBoxProperties {
    struct Look {
        ImageProp image; // the box
        ImageProp graphics;
        TextStyleProp textStyle;
    };
    struct ValueLooks {
        std::array<Look, kCheckStateCount> states; // by CheckState
        Look inactive;
    };
    std::array<ValueLooks, kCheckValueCount> values; // by CheckValue
    StringProp text;
    BoolProp showText;
    StringProp toolTip;
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
