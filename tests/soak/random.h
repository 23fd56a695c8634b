// The soak's random numbers: one seed gives the same run everywhere.
#pragma once

#include <cstddef>
#include <cstdint>

namespace morvane::soak {

class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t bits()
    {
        m_state += 0x9E3779B97F4A7C15u;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
        return mixed ^ (mixed >> 31);
    }
    /// 0 to count - 1; 0 for nothing to choose from.
    std::size_t below(std::size_t count) { return count ? static_cast<std::size_t>(bits() % count) : 0; }
    int between(int low, int high) { return low + static_cast<int>(below(static_cast<std::size_t>(high - low + 1))); }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    template <class Container>
    auto& pick(Container& container)
    {
        return container[below(std::size(container))];
    }

    /// Numbers at which arithmetic breaks, and ordinary ones.
    std::int64_t oddNumber()
    {
        static constexpr std::int64_t kOdd[] = {
            0,          1,         -1,       2,     7,     16,        100,       255,
            256,        32767,     -32768,   65535, 65536, INT32_MAX, INT32_MIN, INT32_MAX - 1,
            UINT32_MAX, INT64_MAX, INT64_MIN};
        return oneIn(3) ? between(-20, 400) : pick(kOdd);
    }

private:
    std::uint64_t m_state;
};

} // namespace morvane::soak
