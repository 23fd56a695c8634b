// What a state of a button-like control looks like.
#pragma once

#include "frame/properties.h"

namespace morvane {

/// The three properties of a state's group. Names and order are the keys of saved skins.
struct StateLook {
    ImageProp image;    // the background, or the box
    ImageProp graphics; // what stands beside the text
    TextStyleProp textStyle;

    void declare(const PropertyGroup& group)
    {
        group.style(image, L"Image");
        group.style(graphics, L"Graphics");
        group.style(textStyle, L"TextStyle");
    }
};

} // namespace morvane
