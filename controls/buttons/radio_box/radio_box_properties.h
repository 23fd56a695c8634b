// The property table of the radio box. Names and order are the keys of saved skins.
#pragma once

#include "frame/parts/auto_size.h"
#include "frame/parts/caption.h"
#include "frame/parts/graphic_properties.h"
#include "frame/properties.h"

#include <array>

namespace morvane {

/// In the order of the interface's VEX_RADIOBOXSTATE.
enum class RadioState { Normal, Hot, Press, Disable };
inline constexpr int kRadioStateCount = 4;

constexpr bool isRadioState(int state)
{
    return state >= 0 && state < kRadioStateCount;
}

/// Where the look of a state and a value stands.
constexpr std::size_t radioLookIndex(int state, bool isChecked)
{
    return static_cast<std::size_t>(state + (isChecked ? kRadioStateCount : 0));
}

struct RadioBoxProperties {
    struct Look {
        ImageProp back;
        ColorProp color;
        ImageProp box;
        ImageProp graphics;
        TextStyleProp textStyle;
    };
    BoolProp drawsColor;                          // instead of the background image
    std::array<Look, 2 * kRadioStateCount> looks; // by radioLookIndex
    CaptionProps caption;
    GraphicProps graphic;
    LongProp graphicWidth; // pixels; 0: the graphic's own
    LongProp graphicHeight;
    LongProp groupId;  // 0: the boxes of one parent belong together
    CursorProp cursor; // read by the framework
    AutoSize autoSize;

    void declare(PropertyTable& table);
};

} // namespace morvane
