// The runtime's time. Everything that waits asks this clock, so that tests and recordings can move it.
#pragma once

#include <cstdint>

namespace ambrel {

class Clock {
public:
    static Clock& instance() noexcept;

    /// Milliseconds since an arbitrary start; never goes back.
    std::int64_t nowMs() const noexcept;

    bool isFrozen() const noexcept { return m_frozen; }
    void freeze() noexcept;
    void advance(std::int64_t milliseconds) noexcept; // only while frozen
    void run() noexcept;

private:
    static std::int64_t systemMs() noexcept;

    bool m_frozen = false;
    std::int64_t m_frozenAt = 0;
    std::int64_t m_offset = 0; // added to the system's time so that running on continues from the frozen time
};

} // namespace ambrel
