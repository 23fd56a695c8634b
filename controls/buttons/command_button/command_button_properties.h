// The property table of the command button. Names and order are the keys of saved skins.
#pragma once

#include "controls/buttons/command_button/command_button_logic.h"
#include "frame/parts/auto_size.h"
#include "frame/properties.h"

#include <array>

namespace morvane {

struct CommandButtonProperties {
    struct Look {
        ImageProp image;
        ImageProp graphics;
        TextStyleProp textStyle;
    };
    std::array<Look, kButtonStateCount> look; // by ButtonState
    Look inactive;
    StringProp text;
    BoolProp showText;
    StringProp toolTip;
    BoolProp isStacked;
    BoolProp isRightAligned;
    LongProp graphicX; // pixels
    LongProp graphicY;
    AutoSize autoSize;
    std::array<HotkeyProp, 2> hotkeys; // these and the cursor are read by the framework
    BoolProp activatedByBackspace;
    BoolProp activatedByEnter;
    CursorProp cursor;

    void declare(PropertyTable& table);
};

} // namespace morvane
