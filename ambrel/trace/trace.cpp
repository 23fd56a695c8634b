#include "ambrel/trace/trace.h"

#include "ambrel/trace/clock.h"

#include <algorithm>
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

std::int64_t Clock::nowMs() const noexcept
{
    return m_frozen ? m_frozenAt : systemMs() + m_offset;
}

void Clock::freeze() noexcept
{
    if (!m_frozen) {
        m_frozenAt = nowMs();
        m_frozen = true;
    }
}

void Clock::advance(std::int64_t milliseconds)
{
    if (!m_frozen || milliseconds <= 0)
        return;
    m_frozenAt += milliseconds;
    ++m_telling;
    for (std::size_t i = 0; i < m_listeners.size(); ++i) {
        if (m_listeners[i])
            m_listeners[i]->clockMoved();
    }
    if (--m_telling == 0)
        std::erase(m_listeners, nullptr);
}

void Clock::add(Listener& listener)
{
    m_listeners.push_back(&listener);
}

void Clock::remove(Listener& listener) noexcept
{
    if (m_telling)
        std::replace(m_listeners.begin(), m_listeners.end(), &listener, static_cast<Listener*>(nullptr));
    else
        std::erase(m_listeners, &listener);
}

void Clock::run() noexcept
{
    if (m_frozen) {
        m_offset = m_frozenAt - systemMs();
        m_frozen = false;
    }
}

} // namespace ambrel
