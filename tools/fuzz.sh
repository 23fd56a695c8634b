#!/bin/sh
# Runs every fuzz target for a while. Usage: tools/fuzz.sh SECONDS [TARGET...]
# New inputs stay in build/fuzz/corpus; a failing one is written to build/fuzz/failures/TARGET, from where it moves to
# fuzz/regressions/TARGET together with its repair. Ends with status 1 when a target failed.
set -eu

seconds=${1:?usage: tools/fuzz.sh SECONDS [TARGET...]}
shift
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build/fuzz
# The most memory a target may take, in megabytes: what reading a package may take, and the sanitizers' own share.
memory=768

cmake --preset native -S "$root" -B "$build" -DMORVANE_FUZZ=ON -DMORVANE_PUGIXML_FROM_SOURCE=ON \
    -DCMAKE_CXX_FLAGS="-O1 -g -fno-omit-frame-pointer -fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all" \
    > /dev/null
if [ $# -eq 0 ]; then
    set -- $(sed -n 's/^morvane_fuzz_target(\([a-z_]*\) .*/\1/p' "$root/fuzz/CMakeLists.txt")
fi

failed=
for name in "$@"; do
    cmake --build "$build" --target "fuzz_$name" -j 2 > "$build/build.log" || { cat "$build/build.log"; exit 1; }
    mkdir -p "$build/corpus/$name" "$build/failures/$name"
    seeds=
    for folder in "$root/fuzz/corpus/$name" "$root/fuzz/regressions/$name"; do
        [ -d "$folder" ] && seeds="$seeds $folder"
    done
    dictionary=
    [ -f "$root/fuzz/dictionaries/$name.dict" ] && dictionary="-dict=$root/fuzz/dictionaries/$name.dict"
    echo "$name: $seconds s"
    # shellcheck disable=SC2086 # the folders contain no spaces that matter
    if ! "$build/bin/fuzz_$name" -max_total_time="$seconds" -rss_limit_mb=$memory -timeout=10 -max_len=65536 \
        -print_final_stats=1 -artifact_prefix="$build/failures/$name/" $dictionary "$build/corpus/$name" $seeds \
        > "$build/$name.log" 2>&1; then
        failed="$failed $name"
        tail -40 "$build/$name.log"
    fi
    sed -n 's/^stat::number_of_executed_units: */  executions /p; s/^stat::peak_rss_mb: */  peak memory MB /p' "$build/$name.log"
done

if [ -n "$failed" ]; then
    echo "failed:$failed"
    exit 1
fi
