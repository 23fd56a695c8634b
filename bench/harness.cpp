#include "bench/harness.h"

#include <windows.h>

#include <algorithm>

namespace bench {

volatile long long g_sink; // written, never read: what goes in had to be computed

namespace {

double now() noexcept
{
    static const double period = [] {
        LARGE_INTEGER frequency{};
        QueryPerformanceFrequency(&frequency);
        return 1.0 / static_cast<double>(frequency.QuadPart);
    }();
    LARGE_INTEGER count{};
    QueryPerformanceCounter(&count);
    return static_cast<double>(count.QuadPart) * period;
}

double quantile(std::vector<double> values, double part)
{
    const auto at = static_cast<std::size_t>(part * static_cast<double>(values.size() - 1) + 0.5);
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(at), values.end());
    return values[at];
}

Figure figureOf(const std::vector<double>& times)
{
    const double median = quantile(times, 0.5);
    return {median, (quantile(times, 0.75) - quantile(times, 0.25)) / 2 / median};
}

double timeRound(const Contender& contender)
{
    if (contender.before)
        contender.before();
    const double start = now();
    contender.round();
    const double spent = now() - start;
    if (contender.after)
        contender.after();
    return spent / contender.operations;
}

/// Decides how many rounds a figure gets: enough for a median, not longer than a reader waits.
class Rounds {
public:
    explicit Rounds(bool isQuick)
        : m_atLeast(isQuick ? 3u : 5u), m_atMost(isQuick ? 7u : 31u), m_end(now() + (isQuick ? 0.3 : 2.0))
    {
    }
    bool areEnough(std::size_t done) const { return done >= m_atMost || (done >= m_atLeast && now() >= m_end); }

private:
    std::size_t m_atLeast;
    std::size_t m_atMost;
    double m_end;
};

} // namespace

Figure Bench::measure(const Contender& contender) const
{
    timeRound(contender); // caches fill, lazy work is done
    std::vector<double> times;
    for (const Rounds rounds(isQuick()); !rounds.areEnough(times.size());)
        times.push_back(timeRound(contender));
    return figureOf(times);
}

Comparison Bench::compare(const Contender& ours, const Contender& other) const
{
    if (m_options.isAlone)
        return {measure(ours), {}, 0};
    timeRound(ours);
    timeRound(other);
    std::vector<double> ourTimes, otherTimes, ratios;
    for (const Rounds rounds(isQuick()); !rounds.areEnough(ratios.size());) {
        ourTimes.push_back(timeRound(ours));
        otherTimes.push_back(timeRound(other));
        ratios.push_back(otherTimes.back() / ourTimes.back());
    }
    return {figureOf(ourTimes), figureOf(otherTimes), quantile(ratios, 0.5)};
}

void use(long long value) noexcept
{
    g_sink = value;
}

} // namespace bench
