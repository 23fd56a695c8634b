// Timing one thing beside another: rounds of both sides alternate, so that a disturbance of the machine meets both.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

/// What the command line asks for.
struct Options {
    bool isQuick = false; // fewer rounds
    bool isAlone = false; // without the other sides, for profilers
    std::string caseName; // run only cases whose name contains it; empty: all
};

/// One side of a comparison. A round is timed as a whole and counts as `operations` operations.
struct Contender {
    double operations = 1;
    std::function<void()> round;
    std::function<void()> before = {}; // not timed, may be empty
    std::function<void()> after = {};  // the same
};

/// Seconds for each operation.
struct Figure {
    double median = 0;
    double spread = 0; // half the distance between the quartiles, as a part of the median
};

struct Comparison {
    Figure ours;
    Figure other;
    double ratio = 0; // how many times faster ours is, the median over neighbouring rounds; 0: there was no other side
};

/// Work that was not done makes a figure worthless: the case fails.
class CheckFailed : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline void check(bool isRight, const char* what)
{
    if (!isRight)
        throw CheckFailed(what);
}

class Bench {
public:
    explicit Bench(Options options) : m_options(std::move(options)) {}

    bool isQuick() const { return m_options.isQuick; }
    bool wants(const std::string& caseName) const { return caseName.find(m_options.caseName) != std::string::npos; }

    Figure measure(const Contender& contender) const;
    Comparison compare(const Contender& ours, const Contender& other) const;

private:
    Options m_options;
};

/// For work that one round repeats.
template <class Body>
Contender repeated(int operations, Body body, std::function<void()> before = {})
{
    return {static_cast<double>(operations),
            [operations, body] {
                for (int i = 0; i < operations; ++i)
                    body(i);
            },
            std::move(before)};
}

/// Keeps the compiler from leaving out what computes a value.
void use(long long value) noexcept;

/// A named measurement. It builds what it needs, so that a case left out costs nothing.
struct Case {
    const char* name;
    void (*run)(Bench&);
};

} // namespace bench
