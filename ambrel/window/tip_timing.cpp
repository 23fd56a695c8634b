#include "ambrel/window/tip_timing.h"

#include <utility>

namespace ambrel {

void TipTiming::offer(std::uint64_t object, std::wstring text, std::int64_t nowMs)
{
    if (text.empty())
        return dismiss(nowMs);
    const bool sameObject = object == m_object && m_phase != Phase::Idle;
    const bool sameText = text == m_text;
    m_text = std::move(text);
    m_object = object;
    if (sameObject && m_phase == Phase::Shown) {
        m_due = nowMs + kStayMs; // a value being dragged keeps its tip
    } else if (!(sameObject && sameText)) {
        const bool justSeen = m_phase == Phase::Shown || nowMs - m_lastSeen <= kReshowMs;
        m_phase = Phase::Waiting;
        m_due = justSeen ? nowMs : nowMs + kDelayMs;
    }
}

void TipTiming::dismiss(std::int64_t nowMs) noexcept
{
    if (m_phase == Phase::Shown)
        m_lastSeen = nowMs;
    m_phase = Phase::Idle;
    m_object = 0;
}

bool TipTiming::update(std::int64_t nowMs) noexcept
{
    if ((m_phase != Phase::Waiting && m_phase != Phase::Shown) || nowMs < m_due)
        return false;
    if (m_phase == Phase::Waiting) {
        m_phase = Phase::Shown;
        m_due = nowMs + kStayMs;
    } else {
        m_phase = Phase::Expired; // not again until the pointer comes anew
    }
    return true;
}

std::int64_t TipTiming::nextDue() const noexcept
{
    return m_phase == Phase::Waiting || m_phase == Phase::Shown ? m_due : kNever;
}

} // namespace ambrel
