// The list of what happened, newest first.
#pragma once

#include "gallery/inspector/event_log.h"
#include "gallery/inspector/row_pager.h"

namespace gallery {

class LogPanel {
public:
    LogPanel(Scene& scene, IVexControlBase& parent, const Rect& place, EventLog& log);

    /// Shows the log's lines as they are now.
    void refresh();
    RowPager& pager() { return m_pager; }

private:
    struct Slot {
        ComPtr<ICmdButton> time;
        ComPtr<ICmdButton> what;
        ComPtr<ICmdButton> object;
        std::wstring shownTime;
        std::wstring shownWhat;
        std::wstring shownObject;
    };
    void addCommands(Scene& scene, IVexControlBase& parent, const Rect& heading);
    void addFilters(Scene& scene, IVexControlBase& parent, const Rect& place);
    void show();
    void showLine(Slot& slot, const LogLine* line);

    EventLog& m_log;
    RowPager m_pager;
    std::array<bool, kLogKinds> m_isKindShown{true, true, true, true};
    std::vector<Slot> m_slots;
    std::vector<const LogLine*> m_lines; // of the log, those of the kinds shown
};

} // namespace gallery
