// What the framework's notifications say, as types. A handler's parameter tells what happened; its result tells whether
// the framework's own default still runs.
#pragma once

#include "base/geometry.h"
#include "host/host.h"

namespace morvane {

enum class Handled : bool { No, Yes };

constexpr Handled handledIf(bool handled) noexcept
{
    return handled ? Handled::Yes : Handled::No;
}

/// Something the pointer did; the point is in window coordinates.
struct PointerNotice {
    VexMsgID id;
    Point point;

    static PointerNotice from(const VexNotify& notify) noexcept
    {
        return {notify.eVexMsgId, {static_cast<int>(notify.lParam2), static_cast<int>(notify.lParam3)}};
    }

    /// As it travels in the callbacks' parameter.
    std::int64_t packed() const noexcept { return packPoint(point); }
};

/// A window message the control registered for, with its own parameters.
struct WindowMessageNotice {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

/// A control of this library that is part of this one reports something.
struct EnableNotice {
    bool enable;
    bool redraw;
};

struct IconRequest {
    Size size;
    HICON* icon; // checked, never null
};

/// The packaged default look is to be imported.
struct ImportRequest {
    IVexRes* res;             // may be null
    std::int64_t parent;      // the framework's handle of the parent object
    IVexControlBase** result; // may be null
};

} // namespace morvane
