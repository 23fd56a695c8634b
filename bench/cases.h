// The parts of the table, in the order in which they are printed.
#pragma once

#include "bench/harness.h"

#include <span>

namespace bench {

std::span<const Case> lifeCases();
std::span<const Case> paintingCases();
std::span<const Case> memoryCases();
std::span<const Case> pixelCases();
std::span<const Case> textCases();
std::span<const Case> contractCases();
std::span<const Case> skinCases();
std::span<const Case> growthCases();

} // namespace bench
