// When a tool tip is seen. Portable: told what happens and the time, it answers what to show.
#pragma once

#include <cstdint>
#include <string>

namespace ambrel {

/// A tip waits until the pointer has rested, stays for a while, and goes when the pointer leaves or a button is
/// pressed. While one was just seen, the next comes at once, so that a row of buttons can be read off.
class TipTiming {
public:
    static constexpr std::int64_t kDelayMs = 500;
    static constexpr std::int64_t kStayMs = 5000;
    static constexpr std::int64_t kReshowMs = 300; // after one went
    static constexpr std::int64_t kNever = -1;

    /// An object under the pointer has this tip; an empty one hides what is shown. A tip that is shown already only
    /// changes its text.
    void offer(std::uint64_t object, std::wstring text, std::int64_t nowMs);
    /// The pointer left, a button was pressed, a key was used.
    void dismiss(std::int64_t nowMs) noexcept;
    /// Time has passed; answers whether what is shown changed.
    bool update(std::int64_t nowMs) noexcept;

    bool isShown() const noexcept { return m_phase == Phase::Shown; }
    const std::wstring& text() const noexcept { return m_text; }
    std::uint64_t object() const noexcept { return m_object; }
    /// When `update` is needed next; kNever when it is not.
    std::int64_t nextDue() const noexcept;

private:
    enum class Phase { Idle, Waiting, Shown, Expired };

    Phase m_phase = Phase::Idle;
    std::uint64_t m_object = 0;
    std::wstring m_text;
    std::int64_t m_due = 0;
    std::int64_t m_lastSeen = -kReshowMs - 1;
};

} // namespace ambrel
