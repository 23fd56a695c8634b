// A living control, asked for what only it can tell: its property table and how it answers notifications.
#pragma once

#include "frame/com/com_ptr.h"
#include "host/host.h"
#include "tools/describe/json_writer.h"

namespace describe {

using morvane::ComPtr;

/// A window of the runtime that is never shown, with one control after the other in it.
class Workshop {
public:
    /// Throws std::runtime_error when the runtime gives no window.
    Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop();

    /// Whether objects of the class are controls; others have no property table.
    static bool isControl(REFCLSID classId);

    void writeControl(JsonWriter& json, REFCLSID classId);

private:
    ComPtr<IVexControlBase> create(REFCLSID classId);
    void writeNotifications(JsonWriter& json, REFCLSID classId);

    ComPtr<IVexRes> m_resources;
    ComPtr<IAmbrel> m_root;
    int m_created = 0;
};

} // namespace describe
