// Integer arithmetic that says how it rounds.
#pragma once

#include <cstdint>
#include <limits>

namespace morvane {

/// value * numerator / denominator in 64 bits, rounded to the nearest whole number (halves away from zero).
/// A zero denominator gives 0.
constexpr int scaled(int value, int numerator, int denominator)
{
    if (denominator == 0)
        return 0;
    const std::int64_t product = static_cast<std::int64_t>(value) * numerator;
    const std::int64_t half = (denominator < 0 ? -static_cast<std::int64_t>(denominator) : denominator) / 2;
    return static_cast<int>((product + (product < 0 ? -half : half)) / denominator);
}

/// The low 16 bits as a signed number: what remains of a coordinate that travelled through a 16-bit parameter.
constexpr int narrowed16(int value)
{
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(value & 0xFFFF));
}

/// What lies in the 32-bit range, held at its ends.
constexpr int saturated(std::int64_t value)
{
    if (value > std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (value < std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

constexpr int saturatingAdd(int a, int b)
{
    return saturated(static_cast<std::int64_t>(a) + b);
}
constexpr int saturatingSubtract(int a, int b)
{
    return saturated(static_cast<std::int64_t>(a) - b);
}

} // namespace morvane
