#!/usr/bin/env bash
# Runs every test: installs what is missing, builds each preset, runs its test programs and scripts.
# Usage: tools/test.sh [native] [win64-release] [win64-checked] [checks]; without arguments all of them.
#
# A test script is an executable tests/*/run.sh. It gets the folder with programs and libraries as its argument and as
# BIN, a ready WINEPREFIX and a DISPLAY, and fails with a status other than 0. A last line "N passed, N failed" is added
# to the sum, otherwise the script counts as one test. The last line of the output here is such a line, too.
# Logs stay in build/test-logs.
set -uo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=tools/wine_env.sh
. tools/wine_env.sh

readonly logs=build/test-logs
# A program that runs longer than this many seconds hangs.
readonly longest_test=900
readonly longest_build=3600

passed=0
failed=0
skipped=0
failures=()
watched= # the process that runs now
step=0
steps=0
started=$SECONDS

# planned is filled first and run afterwards, so that the number of steps is known.
planned_names=()
planned_calls=()
plan()
{
    planned_names+=("$1")
    planned_calls+=("$2")
}

note_failure()
{
    failures+=("$1"$'\n'"      again: $2")
    echo "  FAILED: $1"
    echo "  again:  $2"
}

# watch LOG LIMIT COMMAND...: runs the command with its output in LOG and shows how far it is. Status of the command.
watch()
{
    local log=$1 limit=$2 begun=$SECONDS pid line shown=$SECONDS
    shift 2
    timeout --kill-after=10 "$limit" "$@" >"$log" 2>&1 </dev/null &
    pid=$!
    watched=$pid
    while kill -0 "$pid" 2>/dev/null; do
        sleep 0.2
        if [ -t 1 ]; then
            line=$(tail -c 400 "$log" | tr '\r' '\n' | grep -v '^$' | tail -n 1 | tr -d '\033' | cut -c 1-70)
            printf '\r\033[K  %4d s  %s' $((SECONDS - begun)) "$line"
        elif [ $((SECONDS - shown)) -ge 30 ]; then
            shown=$SECONDS
            echo "  $((SECONDS - begun)) s: $(tail -c 400 "$log" | tail -n 1 | cut -c 1-90)"
        fi
    done
    [ -t 1 ] && printf '\r\033[K'
    wait "$pid"
    local status=$?
    watched=
    return $status
}

# watch_wine LOG COMMAND...: watches a test, which may run under Wine, and once more if Wine itself broke off. Very rarely
# (seen once in 2,400 runs of a program that does nothing but start threads and return) the loader of the system under
# Wine ends a finished process with an assertion of its own or a signal. A fault of a Windows program never looks like
# that: Wine turns it into an exception with a backtrace. What fails twice, or in any other way, has failed.
watch_wine()
{
    local log=$1 status=0
    shift
    watch "$log" $longest_test "$@" || status=$?
    if [ $status -eq 139 ] || { [ $status -ne 0 ] && grep -a -q '^Inconsistency detected by ld.so' "$log"; }; then
        if ! grep -a -q '^Backtrace:' "$log"; then
            echo "  Wine's own process broke (status $status, $log.broken); it runs once more"
            mv "$log" "$log.broken"
            status=0
            watch "$log" $longest_test "$@" || status=$?
        fi
    fi
    return $status
}

build()
{
    local preset=$1 log=$logs/build-$1.log status=0
    watch "$log" $longest_build tools/build.sh "$preset" || status=$?
    if [ $status -ne 0 ]; then
        failed=$((failed + 1))
        { grep -E -A 12 '^FAILED|CMake Error|error:' "$log" || tail -n 30 "$log"; } | head -n 60
        note_failure "the build of $preset" "tools/build.sh $preset"
    fi
    return $status
}

# program NAME AGAIN COMMAND...: runs a GoogleTest program and adds its tests up. AGAIN runs one test of it, given a filter.
program()
{
    local name=$1 again=$2 status=0 log ok bad quiet last
    shift 2
    log=$logs/$name.log
    watch_wine "$log" "$@" || status=$?
    # Each test is reported once while it runs, with its time at the end; Wine's programs end lines with CR LF.
    ok=$(grep -a -c '^\[       OK \] .* ms)' "$log")
    bad=$(grep -a '^\[  FAILED  \] .* ms)' "$log" | sed 's/^\[  FAILED  \] //; s/[ ,].*//')
    quiet=$(grep -a -c '^\[  SKIPPED \] .* ms)' "$log")
    passed=$((passed + ok))
    skipped=$((skipped + quiet))
    if [ -n "$bad" ]; then
        # What the first failed tests said.
        awk '/^\[ RUN/ { text = "" } { text = text $0 "\n" } /^\[  FAILED  \] .* ms\)/ { printf "%s", text }' "$log" |
            tr -d '\r' | head -n 80
        local test
        for test in $bad; do
            failed=$((failed + 1))
            note_failure "$name: $test" "$again --gtest_filter=$test"
        done
    fi
    if ! grep -a -q '^\[==========\] .* ran\.' "$log"; then
        # It did not get to its end: the test that ran last crashed it or hung, those after it never ran.
        failed=$((failed + 1))
        last=$(grep -a '^\[ RUN' "$log" | tail -n 1 | tr -d '\r' | sed 's/^\[ RUN      \] //')
        if grep -a -q '^Backtrace:' "$log"; then
            tr -d '\r' <"$log" | grep -a -m 1 '^wine: Unhandled'
            tools/explain_crash.sh "$log" "$(dirname "${!#}")"
        else
            tail -n 40 "$log"
        fi
        if [ $status -eq 124 ]; then
            note_failure "$name hung in ${last:-its start}, later tests did not run" "$again --gtest_filter=${last:-*}"
        else
            note_failure "$name ended with status $status in ${last:-its start}, later tests did not run" \
                "$again --gtest_filter=${last:-*}"
        fi
    elif [ $status -ne 0 ] && [ -z "$bad" ]; then
        failed=$((failed + 1))
        tail -n 40 "$log"
        note_failure "$name passed its tests but ended with status $status" "$again"
    elif [ $((ok + quiet)) -eq 0 ] && [ -z "$bad" ]; then
        failed=$((failed + 1))
        note_failure "$name has no tests" "$again"
    fi
    echo "  $ok passed, $(wc -w <<<"$bad") failed"
}

# script NAME AGAIN COMMAND...: runs a command that counts as one test, or as many as its last line says.
script()
{
    local name=$1 again=$2 status=0 log
    shift 2
    log=$logs/$name.log
    watch_wine "$log" "$@" || status=$?
    local good=0 bad=0
    if [[ "$(tail -n 1 "$log" | tr -d '\r')" =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]]; then
        good=${BASH_REMATCH[1]}
        bad=${BASH_REMATCH[2]}
        [ $status -ne 0 ] && [ "$bad" -eq 0 ] && bad=1
    elif [ $status -eq 0 ]; then
        good=1
    else
        bad=1
    fi
    passed=$((passed + good))
    failed=$((failed + bad))
    if [ "$bad" -gt 0 ]; then
        tail -n 40 "$log"
        note_failure "$name (status $status)" "$again"
    else
        echo "  $good passed"
    fi
}

native_tests()
{
    build native || return
    program native-tests build/native/bin/native_tests build/native/bin/native_tests
}

replay_corpus()
{
    grep -q 'add_custom_target(fuzz_replay' fuzz/CMakeLists.txt || { echo "  there are no fuzz targets yet"; return; }
    [ -f build/native/build.ninja ] || { echo "  left out: the native preset is not configured"; return; }
    script fuzz-replay "tools/build.sh native fuzz_replay" tools/build.sh native fuzz_replay
}

wine_prefix()
{
    if ! use_own_display || ! use_wine_prefix; then
        failed=$((failed + 1))
        note_failure "preparing Wine's prefix" "tools/under_wine.sh winver.exe"
    fi
}

windows_tests()
{
    local preset=$1 bin=build/$1/bin runner tests name
    build "$preset" || return
    for tests in "$bin"/*_tests.exe; do
        name=$(basename "$tests" .exe)
        echo "  $name"
        program "$name-$preset" "tools/under_wine.sh $tests" wine "$tests"
    done
    for runner in tests/*/run.sh; do
        [ -x "$runner" ] || continue
        echo "  $runner"
        BIN=$PWD/$bin script "$(basename "$(dirname "$runner")")-$preset" \
            "BIN=$bin tools/under_wine.sh --script $runner $bin" "$runner" "$PWD/$bin"
    done
}

layer_check()
{
    script layers "python3 tools/check_layers.py" python3 tools/check_layers.py
}

[ $# -eq 0 ] && set -- checks native win64-release win64-checked
plan "Installing what is missing" "tools/setup.sh build test"
wine=
for part in "$@"; do
    case $part in
    checks) plan "Checking the layers of the tree" layer_check ;;
    native)
        plan "Portable code under the sanitizers (preset native)" native_tests
        plan "Replaying the fuzzers' inputs" replay_corpus
        ;;
    win64-*)
        [ -n "$wine" ] || plan "Preparing Wine" wine_prefix
        wine=yes
        plan "Windows code under Wine (preset $part)" "windows_tests $part"
        ;;
    *)
        echo "unknown part: $part; there are native, win64-release, win64-checked and checks" >&2
        exit 2
        ;;
    esac
done

mkdir -p "$logs"
trap end_wine EXIT
# Who is interrupted leaves nothing running; timeout passes the signal on to all it started.
trap '[ -n "$watched" ] && kill "$watched"; exit 130' INT TERM
steps=${#planned_names[@]}
for call in "${planned_calls[@]}"; do
    step=$((step + 1))
    echo "[$step/$steps] ${planned_names[$((step - 1))]}"
    begun=$SECONDS
    if ! $call && [ $step -eq 1 ]; then
        echo "Nothing was tested: what the tests need is missing." >&2
        echo "0 passed, 1 failed"
        exit 1
    fi
    echo "  $((SECONDS - begun)) s"
done

echo
echo "All steps took $((SECONDS - started)) s; full logs are in $logs."
[ "$skipped" -gt 0 ] && echo "$skipped skipped"
if [ "$failed" -gt 0 ]; then
    echo "What failed, and how to run just that again:"
    for failure in "${failures[@]}"; do
        echo "  $failure"
    done
fi
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
