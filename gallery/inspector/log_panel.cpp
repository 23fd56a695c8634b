#include "gallery/inspector/log_panel.h"

#include <cwchar>

namespace gallery {

namespace {

constexpr int kHeadingHeight = 22;
constexpr int kRowHeight = 18;
constexpr int kRowsTop = 2 * kHeadingHeight + 6;
constexpr int kTimeWidth = 52;
constexpr int kWhatWidth = 164;

std::size_t rowsIn(const Rect& place)
{
    return static_cast<std::size_t>((place.height() - kRowsTop) / kRowHeight);
}

std::wstring secondsText(std::int64_t milliseconds)
{
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"%.2f s", static_cast<double>(milliseconds) / 1000);
    return text;
}

bool isChecked(IVexCheckBox& box)
{
    VEXCHECKBOX_VALUE value = VEXCHECKBOX_UNCHECKED;
    box.GetValue(&value);
    return value == VEXCHECKBOX_CHECKED;
}

} // namespace

LogPanel::LogPanel(Scene& scene, IVexControlBase& parent, const Rect& place, EventLog& log)
    : m_log(log), m_pager(scene, parent, {place.left, place.top, place.right, place.top + kHeadingHeight}, L"Log",
                          rowsIn(place), [this] { show(); })
{
    addCommands(scene, parent, {place.left, place.top, place.right, place.top + kHeadingHeight});
    addFilters(scene, parent, Rect::at({place.left, place.top + kHeadingHeight + 2}, {place.width(), kHeadingHeight}));
    const Theme& theme = scene.theme();
    const TextLook soft{theme.textSoft, 9, false, TextAlign::Near, 6, true};
    const TextLook strong{theme.text, 9, false, TextAlign::Near, 0, true};
    for (std::size_t index = 0; index < rowsIn(place); ++index) {
        const int top = place.top + kRowsTop + static_cast<int>(index) * kRowHeight;
        const int what = place.left + kTimeWidth;
        const int object = what + kWhatWidth;
        m_slots.push_back({scene.label(&parent, {place.left, top, what - 4, top + kRowHeight}, L"", soft),
                           scene.label(&parent, {what, top, object - 4, top + kRowHeight}, L"", strong),
                           scene.label(&parent, {object, top, place.right, top + kRowHeight}, L"", soft),
                           {},
                           {},
                           {}});
    }
}

void LogPanel::addCommands(Scene& scene, IVexControlBase& parent, const Rect& heading)
{
    const auto pause =
        scene.checkBox(&parent, Rect::at({heading.left + 48, heading.top}, {62, heading.height()}), L"Pause");
    scene.onClick(*pause, [this, box = pause.get()] { m_log.setPaused(isChecked(*box)); });
    const auto clear =
        scene.button(&parent, Rect::at({heading.left + 116, heading.top}, {52, heading.height()}), L"Clear");
    scene.onClick(*clear, [this] {
        m_pager.goTo(0);
        m_log.clear(); // ends the lines shown
        refresh();
    });
}

void LogPanel::addFilters(Scene& scene, IVexControlBase& parent, const Rect& place)
{
    struct Filter {
        LogKind kind;
        const wchar_t* text;
        int width;
    };
    static constexpr Filter kFilters[] = {{LogKind::Notification, L"Notifications", 95},
                                          {LogKind::Property, L"Properties", 85},
                                          {LogKind::Redraw, L"Redraws", 77},
                                          {LogKind::Callback, L"Callbacks", 79}};
    int left = place.left;
    for (const Filter& filter : kFilters) {
        const auto box =
            scene.checkBox(&parent, Rect::at({left, place.top}, {filter.width, place.height()}), filter.text);
        box->SetValue(VEXCHECKBOX_CHECKED);
        scene.onClick(*box, [this, raw = box.get(), kind = filter.kind] {
            m_isKindShown[static_cast<std::size_t>(kind)] = isChecked(*raw);
            refresh();
        });
        left += filter.width;
    }
}

void LogPanel::refresh()
{
    m_lines.clear();
    for (const LogLine& line : m_log.lines())
        if (m_isKindShown[static_cast<std::size_t>(line.kind)])
            m_lines.push_back(&line);
    m_pager.setCount(m_lines.size());
    show();
}

void LogPanel::show()
{
    std::size_t index = m_pager.first();
    for (Slot& slot : m_slots) {
        showLine(slot, index < m_lines.size() ? m_lines[index] : nullptr);
        ++index;
    }
}

void LogPanel::showLine(Slot& slot, const LogLine* line)
{
    const std::wstring what = !line              ? std::wstring()
                              : line->count == 1 ? line->what
                                                 : line->what + L"  \u00D7" + std::to_wstring(line->count);
    showText(*slot.time, slot.shownTime, line ? secondsText(line->timeMs) : std::wstring());
    showText(*slot.what, slot.shownWhat, what);
    showText(*slot.object, slot.shownObject, line ? line->object : std::wstring());
}

} // namespace gallery
