#include "ambrel/trace/trace.h"

#include "ambrel/trace/clock.h"

#include <chrono>

namespace ambrel {

Trace& Trace::instance() noexcept
{
    static Trace trace;
    return trace;
}

void Trace::setSink(AmbrelTraceSink sink, void* context) noexcept
{
    m_sink = sink;
    m_context = context;
}

void Trace::emit(const AmbrelTraceEntry& entry) const noexcept
{
    if (m_sink)
        m_sink(m_context, &entry);
}

Clock& Clock::instance() noexcept
{
    static Clock clock;
    return clock;
}

std::int64_t Clock::systemMs() noexcept
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

std::int64_t Clock::nowMs() const noexcept { return m_frozen ? m_frozenAt : systemMs() + m_offset; }

void Clock::freeze() noexcept
{
    if (!m_frozen) {
        m_frozenAt = nowMs();
        m_frozen = true;
    }
}

void Clock::advance(std::int64_t milliseconds) noexcept
{
    if (m_frozen && milliseconds > 0)
        m_frozenAt += milliseconds;
}

void Clock::run() noexcept
{
    if (m_frozen) {
        m_offset = m_frozenAt - systemMs();
        m_frozen = false;
    }
}

} // namespace ambrel
