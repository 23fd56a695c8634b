// What happens to the objects of a page: the runtime's trace, kept for showing.
#pragma once

#include "ambrel/ambrel.h"
#include "gallery/inspector/object_tree.h"

#include <array>
#include <deque>
#include <vector>

namespace gallery {

/// What the log can be narrowed to.
enum class LogKind { Notification, Property, Redraw, Callback };
inline constexpr std::size_t kLogKinds = 4;

struct LogLine {
    LogKind kind = LogKind::Notification;
    const IUnknown* identity = nullptr;
    std::int64_t timeMs = 0; // since the log was opened
    int count = 1;           // the same, one after the other
    std::wstring what;
    std::wstring object;
};

/// Listens while it is open. Entries wait in a fixed ring without touching any object, since they arrive in the middle
/// of the objects' work; collect() turns them into lines later.
class EventLog {
public:
    static constexpr std::size_t kCapacity = 200;

    EventLog() = default;
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;
    ~EventLog() { close(); }

    void open();
    void close();
    void clear();
    void setPaused(bool isPaused) { m_isPaused = isPaused; }
    /// Objects that are never logged.
    void ignore(std::vector<const IUnknown*> identities);
    /// Nothing is recorded while one of these lives: the inspector itself asks objects.
    class Quiet {
    public:
        explicit Quiet(EventLog& log) : m_log(log) { ++m_log.m_quiet; }
        Quiet(const Quiet&) = delete;
        Quiet& operator=(const Quiet&) = delete;
        ~Quiet() { --m_log.m_quiet; }

    private:
        EventLog& m_log;
    };

    /// True once after something happened to an object that is not ignored, also while paused.
    bool takeActivity() { return std::exchange(m_hasActivity, false); }
    /// True once after objects came or went or changed their text.
    bool takeTreeChange() { return std::exchange(m_hasTreeChange, false); }
    /// Makes lines of the waiting entries; those of objects that are not in `objects` are dropped.
    void collect(const std::vector<ObjectRow>& objects);

    const std::deque<LogLine>& lines() const { return m_lines; } // newest first, at most kCapacity

private:
    static constexpr std::size_t kTextLength = 48;
    struct Waiting {
        AmbrelTraceKind kind;
        const IUnknown* identity;
        long id;
        std::int64_t timeMs;
        SkinRect rect;
        int count;                 // of timers: how many objects were told, one after the other
        wchar_t text[kTextLength]; // cut
    };
    static void STDMETHODCALLTYPE traced(void* context, const AmbrelTraceEntry* entry);
    void record(const AmbrelTraceEntry& entry);
    static LogLine lineOf(const Waiting& entry);

    std::vector<const IUnknown*> m_ignored; // sorted
    std::array<Waiting, kCapacity> m_waiting;
    std::size_t m_next = 0;
    std::size_t m_waitingCount = 0;
    std::deque<LogLine> m_lines;
    std::int64_t m_startMs = 0;
    int m_quiet = 0;
    bool m_isOpen = false;
    bool m_isPaused = false;
    bool m_hasActivity = false;
    bool m_hasTreeChange = false;
};

} // namespace gallery
