// What the soak did last, so that a crash or a hang tells how to see it again.
#pragma once

#include <cstdint>
#include <string>

namespace morvane::soak {

/// From now on a crash or a step of more than half a minute prints the last steps and ends the process with status 3.
void watchForCrashes();

/// Begins a round: `seed` and the number of steps repeat it.
void logRound(std::uint64_t seed);
/// Begins a step.
void logStep(std::uint64_t number, std::string what);
/// Adds to the present step.
void logDetail(const std::string& what);

void printLastSteps();
/// Every step and detail also as it happens.
void logEverything();

} // namespace morvane::soak
