#!/usr/bin/env bash
# Measures which lines the native and the Windows tests reach. Usage: tools/coverage.sh [native]
# With "native" only the portable code is measured, in a minute instead of ten. Leaves in build/coverage: html/ (native
# tests, line by line) and missing.txt (what no test reaches, by file).
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/coverage
windows=build/win64-coverage

cmake --preset native -B $build -DCMAKE_CXX_FLAGS="-O0 -g -fprofile-instr-generate -fcoverage-mapping" >/dev/null
cmake --build $build --parallel "$(nproc)" --target native_tests >$build/build.log 2>&1 || { tail -n 40 $build/build.log; exit 1; }
LLVM_PROFILE_FILE=$PWD/$build/tests.profraw $build/bin/native_tests >$build/tests.log 2>&1 ||
    { tail -n 40 $build/tests.log; echo "Some tests failed: the figures would be wrong." >&2; exit 1; }

# LLVM's tools carry the compiler's version in their names where several are installed.
version=$(clang --version | sed -n 's/.*version \([0-9]*\).*/\1/p')
llvm() { if command -v "$1-$version" >/dev/null; then "$1-$version" "${@:2}"; else "$1" "${@:2}"; fi; }
llvm llvm-profdata merge -sparse $build/tests.profraw -o $build/tests.profdata
measured=($build/bin/native_tests -instr-profile=$build/tests.profdata
    -ignore-filename-regex='(_test\.cpp|/usr/|/build/|/tests/)')
# Its warnings are of inline functions that differ between the test and its subject.
llvm llvm-cov export "${measured[@]}" -format=lcov >$build/native.lcov 2>$build/llvm-cov.log
llvm llvm-cov show "${measured[@]}" -format=html -output-dir=$build/html >/dev/null 2>&1

if [ "${1:-}" = native ]; then
    windows=none
else
    # The libraries write what they counted when they are unloaded, beside their objects; Wine sees the same paths.
    tools/build.sh win64-coverage >$build/build-windows.log 2>&1 ||
        { tail -n 40 $build/build-windows.log; exit 1; }
    find $windows -name '*.gcda' -delete
    for tests in $windows/bin/*_tests.exe; do
        echo "$(basename "$tests" .exe) under Wine"
        # How long things take says nothing in such a build.
        tools/under_wine.sh "$tests" --gtest_filter='-*IsQuick' >"$build/$(basename "$tests" .exe).log" 2>&1 ||
            { tail -n 20 "$build/$(basename "$tests" .exe).log"; echo "  some tests failed; what ran is counted" >&2; }
    done
    for runner in tests/*/run.sh; do
        # The soak looks for crashes and leaks only: what it reaches is not known to be right.
        [ "$runner" = tests/soak/run.sh ] && continue
        echo "$runner"
        BIN=$PWD/$windows/bin tools/under_wine.sh --script "$runner" "$PWD/$windows/bin" \
            >"$build/$(basename "$(dirname "$runner")").log" 2>&1 || echo "  failed; what ran is counted" >&2
    done
fi
python3 tools/coverage_report.py "$PWD" $build/native.lcov $windows $build/missing.txt
echo "details: $build/missing.txt and $build/html/index.html"
