// What a control remembers of its host while it is attached.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"

#include <cstdint>

namespace morvane {

/// Filled anew whenever the framework says that the control is configured or finally created, dropped with the control;
/// every pointer may be null at any time, and any call out may replace them all: who calls through one holds it.
struct HostCache {
    ComPtr<IVexObj> object;             // the control's own object, as the inner base object hands it out
    ComPtr<ISkinObjResBase> skinObject; // the same as a member of the object tree
    ComPtr<IVexRes> res;
    ComPtr<IAmbrel> root;
    std::int64_t configNode = 0;   // opaque
    std::int64_t renderDevice = 0; // opaque
    HWND window = nullptr;         // the host window

    /// What the inner base object knows now. Any of the calls it takes may come back in and use or replace the cache.
    static HostCache of(IVexControlBase& inner);
    void clear() { *this = HostCache(); }

    /// Asks the inner base object for the root if it is not known yet; true when it is known afterwards.
    bool ensureRoot(IVexControlBase& inner);

    /// Asks the root for the host window again; keeps the known one when there is no root.
    void refreshWindow();
};

} // namespace morvane
