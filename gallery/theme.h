// The colours of the gallery's own surfaces, in the two palettes of the default skins.
#pragma once

#include "host/host.h"

namespace gallery {

struct Theme {
    OLE_COLOR window;
    OLE_COLOR surface;
    OLE_COLOR line;
    OLE_COLOR text;
    OLE_COLOR textSoft;
    OLE_COLOR accent;
    OLE_COLOR selectSoft;
    OLE_COLOR danger;

    static const Theme& light();
    static const Theme& dark();
};

} // namespace gallery
