// The printed result: plain text, a line as soon as it is known.
#pragma once

#include "bench/harness.h"

#include <span>

namespace bench {

/// "12.3 us" and the like.
std::string timeText(double seconds);
std::string bytesText(double bytes);

/// Starts a part of the table; its columns are "ours", the other side, and how much better ours is.
void section(const char* title, const char* other);

/// `aim`: what the ratio is meant to reach at least; 0: there is no aim.
void row(const char* name, const Comparison& result, double aim = 0);
void row(const char* name, const Figure& figure);
/// An aim in seconds for ours, whatever the other side does.
void row(const char* name, const Figure& figure, double aimSeconds);
void bytesRow(const char* name, double ours, double aimBytes = 0);
void bytesRow(const char* name, double ours, double other, double aimBytes);
/// Why a case has no line of its own.
void remark(const char* name, const char* text);

/// A table of growth: one column for each number of other objects.
void growthSection(std::span<const int> counts);
/// The last column says how many times dearer the largest is than the smallest. `aim`: at most that.
void growthRow(const char* name, std::span<const Figure> figures, double aim);

/// How many aims were missed so far.
int missedAims() noexcept;

} // namespace bench
