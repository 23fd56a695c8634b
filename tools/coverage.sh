#!/usr/bin/env bash
# Measures which lines of the portable code the native tests reach: build/coverage/report.txt and html/.
# Code that speaks COM runs under Wine, for which the cross compiler has no coverage: it is listed as not measured.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/coverage
cmake --preset native -B $build -DCMAKE_CXX_FLAGS="-O0 -g -fprofile-instr-generate -fcoverage-mapping" >/dev/null
cmake --build $build --parallel "$(nproc)" --target native_tests >$build/build.log 2>&1 || { tail -n 40 $build/build.log; exit 1; }
LLVM_PROFILE_FILE=$PWD/$build/tests.profraw $build/bin/native_tests >$build/tests.log 2>&1 ||
    { tail -n 40 $build/tests.log; echo "Some tests failed: the figures below would be wrong." >&2; exit 1; }

# LLVM's tools carry the compiler's version in their names where several are installed.
version=$(clang --version | sed -n 's/.*version \([0-9]*\).*/\1/p')
llvm() { if command -v "$1-$version" >/dev/null; then "$1-$version" "${@:2}"; else "$1" "${@:2}"; fi; }

ours=(-ignore-filename-regex='(_test\.cpp|/usr/|/build/|/tests/)')
llvm llvm-profdata merge -sparse $build/tests.profraw -o $build/tests.profdata
llvm llvm-cov report $build/bin/native_tests -instr-profile=$build/tests.profdata "${ours[@]}" >$build/report.txt
llvm llvm-cov export -summary-only $build/bin/native_tests -instr-profile=$build/tests.profdata "${ours[@]}" >$build/summary.json
llvm llvm-cov show $build/bin/native_tests -instr-profile=$build/tests.profdata "${ours[@]}" -format=html \
    -output-dir=$build/html >/dev/null
python3 - $build/summary.json "$PWD" <<'PYTHON'
import json
import os
import subprocess
import sys

summary, root = json.load(open(sys.argv[1]))["data"][0], sys.argv[2]
measured = {}
for entry in summary["files"]:
    lines = entry["summary"]["lines"]
    if lines["count"]:
        measured[os.path.relpath(entry["filename"], root)] = (lines["covered"], lines["count"])
folders = {}
for name, (covered, count) in measured.items():
    total = folders.setdefault("/".join(name.split("/")[:-1][:2]), [0, 0])
    total[0] += covered
    total[1] += count
print("lines reached by the native tests, by folder")
for folder, (covered, count) in sorted(folders.items()):
    print(f"  {100 * covered / count:5.1f} %  {covered:6} of {count:6}  {folder}")
total = summary["totals"]["lines"]
print(f"  {total['percent']:5.1f} %  {total['covered']:6} of {total['count']:6}  all portable code\n")

print("least reached files")
worst = sorted(measured.items(), key=lambda item: item[1][0] / item[1][1])
for name, (covered, count) in worst[:15]:
    if covered < count:
        print(f"  {100 * covered / count:5.1f} %  {count - covered:6} lines not reached  {name}")

tracked = subprocess.run(["git", "ls-files", "*.cpp"], cwd=root, check=True, capture_output=True, text=True).stdout.split()
apart = [n for n in tracked if n not in measured and not n.endswith("_test.cpp")
         and n.split("/")[0] in ("base", "host", "frame", "controls", "module", "ambrel")]
lines = sum(len(open(os.path.join(root, n), errors="replace").readlines()) for n in apart if os.path.exists(os.path.join(root, n)))
print(f"\nnot measured: {len(apart)} files with {lines} lines that need COM or Win32 and run under Wine")
PYTHON
echo "details: $build/html/index.html"
