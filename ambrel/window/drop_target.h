// Dropping data from other programs onto the controls of a window.
#pragma once

#include "frame/com/com_ptr.h"

#include <oleidl.h>

namespace ambrel {

class WindowCore;

/// Tells the control under the pointer, which answers by storing a drop effect (DROPEFFECT_...) through lParam4:
///     VEXSM_PRE_DODRAGDROP   the pointer is over it    lParam1 the IDataObject, lParam2 x, lParam3 y
///     VEXSM_DODRAGDROP       dropped on it             the same
///     VEXSM_POST_DODRAGDROP  the pointer left it, or after the drop: what PRE began is over    lParam1 0
/// `window` is borrowed: the drop target is revoked before it ends.
morvane::ComPtr<IDropTarget> makeDropTarget(WindowCore& window);

} // namespace ambrel
