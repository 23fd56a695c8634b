// The runtime's time. Everything that waits asks this clock, so that tests and recordings can move it.
#pragma once

#include <cstdint>
#include <vector>

namespace ambrel {

class Clock {
public:
    static Clock& instance() noexcept;

    /// Milliseconds since an arbitrary start; never goes back.
    std::int64_t nowMs() const noexcept;

    /// Told when the clock was moved by hand, so that what waits for it falls due. May add and remove listeners, also
    /// itself.
    class Listener {
    public:
        virtual void clockMoved() = 0;

    protected:
        ~Listener() = default;
    };
    void add(Listener& listener);
    void remove(Listener& listener) noexcept;

    bool isFrozen() const noexcept { return m_frozen; }
    void freeze() noexcept;
    void advance(std::int64_t milliseconds); // only while frozen; tells the listeners
    void run() noexcept;

private:
    static std::int64_t systemMs() noexcept;

    bool m_frozen = false;
    std::int64_t m_frozenAt = 0;
    std::vector<Listener*> m_listeners; // emptied places while they are being told
    int m_telling = 0;
    std::int64_t m_offset = 0; // added to the system's time so that running on continues from the frozen time
};

} // namespace ambrel
