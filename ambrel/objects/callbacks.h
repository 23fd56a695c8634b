// The callbacks that applications register on an object with AddMsgCallback.
#pragma once

#include "host/host.h"

namespace ambrel {

/// What `hFuncCallback` of AddMsgCallback is the address of. `pThis` is the value given at registration; the other
/// three are those of CallMsg, which for a control's own events passes the real-control pointer as `wParam`. Answering
/// true makes CallMsg answer true; the remaining callbacks run all the same. A callback may add and remove callbacks
/// (one added during a call waits for the next message), call in again, and release the object. It must not throw.
using MessageCallback = VARIANT_BOOL(STDMETHODCALLTYPE*)(hyper pThis, long nMsgID, hyper wParam, hyper lParam);

} // namespace ambrel
