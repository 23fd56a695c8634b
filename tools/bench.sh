#!/usr/bin/env bash
# Builds the benchmarks and runs them on one processor, together with Wine's server and the display: a call to the server
# takes several times longer when it wakes up another processor. Usage: tools/bench.sh [--quick] [--case NAME]
# MORVANE_BENCH_CPU chooses the processor, by default the first.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/build.sh win64-release morvane_bench
exec taskset -c "${MORVANE_BENCH_CPU:-0}" tools/under_wine.sh build/win64-release/bin/morvane_bench.exe "$@"
