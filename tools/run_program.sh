#!/usr/bin/env bash
# Builds one of the programs for long runs and runs it under Wine: tools/run_program.sh soak|bench [ARGUMENT...]
# A script tools/NAME.sh, where there is one, does the running instead (it knows how to pin processors, for example).
set -euo pipefail
cd "$(dirname "$0")/.."
name=${1:?usage: tools/run_program.sh NAME [ARGUMENT...]}
shift
program=build/win64-release/bin/$name.exe

tools/setup.sh build test
if [ -x "tools/$name.sh" ]; then
    exec "tools/$name.sh" "$@"
fi
if ! grep -rqE "add_executable\($name[ )]" --include=CMakeLists.txt --include='*.cmake' bench tests gallery cmake; then
    echo "There is no program \"$name\" yet: no CMakeLists.txt makes it." >&2
    exit 1
fi
tools/build.sh win64-release
if [ ! -f "$program" ]; then
    echo "The build made no $program." >&2
    exit 1
fi
exec tools/under_wine.sh "$program" "$@"
