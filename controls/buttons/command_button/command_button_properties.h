// The property table of the command button. Names and order are the keys of saved skins.
#pragma once

#include "controls/buttons/command_button/command_button_logic.h"
#include "frame/parts/auto_size.h"
#include "frame/parts/caption.h"
#include "frame/parts/graphic_properties.h"
#include "frame/parts/state_look.h"
#include "frame/properties.h"

#include <array>

namespace morvane {

struct CommandButtonProperties {
    std::array<StateLook, kButtonStateCount> look; // by ButtonState
    StateLook inactive;
    CaptionProps caption;
    GraphicProps graphic;
    AutoSize autoSize;
    std::array<HotkeyProp, 2> hotkeys; // these and the cursor are read by the framework
    BoolProp activatedByBackspace;
    BoolProp activatedByEnter;
    CursorProp cursor;

    void declare(PropertyTable& table);
};

} // namespace morvane
