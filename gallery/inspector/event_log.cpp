#include "gallery/inspector/event_log.h"

#include "gallery/inspector/event_names.h"

#include <algorithm>
#include <cwchar>
#include <functional>
#include <optional>
#include <string_view>

namespace gallery {

namespace {

std::optional<LogKind> kindOf(AmbrelTraceKind kind)
{
    switch (kind) {
    case AMBREL_TRACE_NOTIFICATION:
        return LogKind::Notification;
    case AMBREL_TRACE_PROPERTY:
        return LogKind::Property;
    case AMBREL_TRACE_REDRAW:
        return LogKind::Redraw;
    case AMBREL_TRACE_CALLBACK:
    case AMBREL_TRACE_EVENT:
        return LogKind::Callback;
    default:
        return std::nullopt;
    }
}

bool changesTree(const AmbrelTraceEntry& entry)
{
    if (entry.kind == AMBREL_TRACE_PROPERTY && entry.text && std::wstring_view(entry.text).ends_with(L"/Text"))
        return true; // rows show the objects' texts
    return entry.kind == AMBREL_TRACE_NOTIFICATION && (entry.id == VEXSM_FINALCREATE || entry.id == VEXSM_DESTROYING);
}

/// Every object hears of every timer of the window: one line says that as well as fifty.
bool isTimer(AmbrelTraceKind kind, long id)
{
    return kind == AMBREL_TRACE_NOTIFICATION && id == VEXSM_TIMER;
}

std::wstring nameOf(long id)
{
    const wchar_t* const known = eventName(id);
    return known ? std::wstring(known) : std::to_wstring(id);
}

std::wstring rectText(const SkinRect& rect)
{
    return std::to_wstring(rect.left) + L"," + std::to_wstring(rect.top) + L" " +
           std::to_wstring(rect.right - rect.left) + L"\u00D7" + std::to_wstring(rect.bottom - rect.top);
}

} // namespace

void EventLog::open()
{
    if (m_isOpen)
        return;
    m_isOpen = true;
    m_startMs = AmbrelClockNow();
    AmbrelSetTraceSink(&EventLog::traced, this);
}

void EventLog::close()
{
    if (std::exchange(m_isOpen, false))
        AmbrelSetTraceSink(nullptr, nullptr);
}

void EventLog::clear()
{
    m_waitingCount = 0;
    m_lines.clear();
}

void EventLog::ignore(std::vector<const IUnknown*> identities)
{
    m_ignored = std::move(identities);
    std::sort(m_ignored.begin(), m_ignored.end(), std::less<>());
}

void STDMETHODCALLTYPE EventLog::traced(void* context, const AmbrelTraceEntry* entry)
{
    static_cast<EventLog*>(context)->record(*entry);
}

void EventLog::record(const AmbrelTraceEntry& entry)
{
    if (m_quiet != 0 || !entry.object || !kindOf(entry.kind))
        return;
    const IUnknown* const identity = identityOf(entry.object);
    if (std::binary_search(m_ignored.begin(), m_ignored.end(), identity, std::less<>()))
        return;
    m_hasActivity = true;
    m_hasTreeChange |= changesTree(entry);
    if (m_isPaused)
        return;
    Waiting& last = m_waiting[(m_next + kCapacity - 1) % kCapacity];
    if (m_waitingCount > 0 && isTimer(entry.kind, entry.id) && isTimer(last.kind, last.id)) {
        ++last.count;
        last.timeMs = AmbrelClockNow() - m_startMs;
        return;
    }
    Waiting& place = m_waiting[m_next];
    m_next = (m_next + 1) % kCapacity;
    m_waitingCount = std::min(m_waitingCount + 1, kCapacity);
    place = {entry.kind, identity, entry.id, AmbrelClockNow() - m_startMs, entry.rect, 1, L""};
    if (entry.text)
        std::wcsncpy(place.text, entry.text, kTextLength - 1);
}

LogLine EventLog::lineOf(const Waiting& entry)
{
    LogLine line;
    line.kind = *kindOf(entry.kind);
    line.identity = entry.identity;
    line.timeMs = entry.timeMs;
    line.count = entry.count;
    switch (line.kind) {
    case LogKind::Notification:
        line.what = nameOf(entry.id);
        break;
    case LogKind::Property:
        line.what = L"set " + std::wstring(entry.text);
        break;
    case LogKind::Redraw:
        line.what = L"redraw " + rectText(entry.rect);
        break;
    case LogKind::Callback:
        line.what = (entry.kind == AMBREL_TRACE_EVENT ? L"event " : L"callback ") + nameOf(entry.id);
        break;
    }
    return line;
}

void EventLog::collect(const std::vector<ObjectRow>& objects)
{
    const std::size_t first = m_next + kCapacity - m_waitingCount;
    for (std::size_t i = 0; i < m_waitingCount; ++i) {
        const Waiting& entry = m_waiting[(first + i) % kCapacity];
        const auto object = std::find_if(objects.begin(), objects.end(),
                                         [&](const ObjectRow& row) { return row.identity == entry.identity; });
        if (object == objects.end())
            continue;
        LogLine line = lineOf(entry);
        const bool concernsAll = isTimer(entry.kind, entry.id);
        if (!m_lines.empty() && m_lines.front().what == line.what &&
            (concernsAll || m_lines.front().identity == line.identity)) {
            m_lines.front().count += line.count;
            m_lines.front().timeMs = line.timeMs;
            continue;
        }
        line.object = concernsAll ? std::wstring(L"each object") : shortLabel(*object);
        m_lines.push_front(std::move(line));
        if (m_lines.size() > kCapacity)
            m_lines.pop_back();
    }
    m_waitingCount = 0;
}

} // namespace gallery
