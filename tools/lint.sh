#!/usr/bin/env bash
# Checks what a compiler does not: layers, format, and clang-tidy's findings in all portable code. Status 1 when one of
# them finds anything. Usage: tools/lint.sh [FILE...]; clang-tidy then reads only those files.
set -uo pipefail
cd "$(dirname "$0")/.."
found=0

echo "Layers"
python3 tools/check_layers.py || found=1

echo "Format"
tools/format.sh --check "$@" || found=1

# clang-tidy reads code through the native compile commands: portable code only. What speaks COM is compiled by the
# cross compiler, whose headers clang-tidy cannot read. Tests are left to the sanitizers that they run under: most of
# what clang-tidy says about them is about the test framework's macros, and they take it minutes each.
echo "clang-tidy"
if [ ! -f build/native/compile_commands.json ]; then
    cmake --preset native >/dev/null || exit 1
fi
mapfile -t sources < <(python3 - "$PWD" "$@" <<'PYTHON'
import json
import os
import sys

root, wanted = sys.argv[1], {os.path.abspath(name) for name in sys.argv[2:]}
for entry in json.load(open("build/native/compile_commands.json")):
    source = entry["file"]
    ours = source.startswith(root + "/") and not source.startswith(root + "/build/")
    if ours and not source.endswith(("_test.cpp", "_tests_main.cpp")) and os.path.exists(source) and (not wanted or source in wanted):
        print(os.path.relpath(source, root))
PYTHON
)
mkdir -p build/lint
rm -f build/lint/*.log
printf '%s\n' "${sources[@]}" | sort -u | xargs -P "$(nproc)" -I{} sh -c '
    log=build/lint/$(echo "$1" | tr / _).log
    clang-tidy --quiet -p build/native "$1" >"$log" 2>/dev/null || echo "cannot be read: $1" >>"$log"
' sh {}
# A header's finding appears once for each source that includes it.
findings=$(cat build/lint/*.log | grep -E '(warning|error): |^cannot be read' | sort -u)
if [ -n "$findings" ]; then
    echo "$findings" | sed "s#^$PWD/##"
    echo "$(wc -l <<<"$findings") findings in ${#sources[@]} files; the code around them is in build/lint"
    found=1
else
    echo "nothing found in ${#sources[@]} files"
fi
exit $found
