#!/usr/bin/env bash
# Configures a preset, when that was not done since the presets changed, and builds it. Usage: tools/build.sh PRESET [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:?usage: tools/build.sh PRESET [TARGET...]}
shift
if [ ! -f "build/$preset/build.ninja" ] || [ CMakePresets.json -nt "build/$preset/build.ninja" ]; then
    cmake --preset "$preset"
fi
cmake --build "build/$preset" --parallel "$(nproc)" ${1:+--target "$@"}
