#!/usr/bin/env bash
# run.sh BIN_FOLDER: a short soak, with the same seed each time and with one of its own. WINEPREFIX and DISPLAY are ready.
set -u
cd "$1" || exit 2
steps=${SOAK_STEPS:-10000}
passed=0
failed=0
for seed in 1 $((RANDOM * 1000 + 100000)); do
    if wine soak.exe --seed "$seed" --steps "$steps"; then passed=$((passed + 1)); else failed=$((failed + 1)); fi
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
