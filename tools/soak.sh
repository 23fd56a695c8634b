#!/usr/bin/env bash
# Builds the soak with traps for undefined behaviour and checked containers and runs it: a million steps, about ten
# minutes. Usage: tools/soak.sh [--steps N] [--seed N] [--verbose]
# The same seed repeats the same run. MORVANE_SOAK_PRESET chooses another build, by default win64-checked.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${MORVANE_SOAK_PRESET:-win64-checked}

tools/setup.sh build test
tools/build.sh "$preset" soak
case " $* " in
*" --steps "* | *" --seconds "*) ;;
*) set -- --steps 1000000 "$@" ;;
esac
# It runs in a folder of its own, so that building meanwhile replaces nothing of it.
bin=$(mktemp -d)
trap 'rm -rf "$bin"' EXIT
for part in soak.exe Morvane.dll Ambrel.dll skins; do
    cp -r "build/$preset/bin/$part" "$bin"
done
status=0
tools/under_wine.sh "$bin/soak.exe" "$@" | tee "$bin/soak.log" || status=$?
if [ $status -ne 0 ]; then
    tools/explain_crash.sh "$bin/soak.log" "$bin"
    tr -d '\r' <"$bin/soak.log" | sed -n 's/^again: soak.exe --seed \([0-9]*\) --steps \([0-9]*\)$/again: make soak SEED=\1 STEPS=\2/p'
fi
exit $status
