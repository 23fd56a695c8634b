#!/usr/bin/env bash
# Formats our C++ sources, or with --check only names the ones that are not formatted (status 1 when there are any).
# Usage: tools/format.sh [--check] [FILE...]
set -euo pipefail
cd "$(dirname "$0")/.."
check=
if [ "${1:-}" = --check ]; then
    check=yes
    shift
fi
if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' | while read -r file; do
        [ -f "$file" ] && echo "$file"
    done)
else
    files=("$@")
fi
if [ -z "$check" ]; then
    clang-format -i "${files[@]}"
    exit 0
fi
bad=0
for file in "${files[@]}"; do
    if ! clang-format --dry-run -Werror "$file" >/dev/null 2>&1; then
        echo "$file is not formatted"
        bad=$((bad + 1))
    fi
done
if [ $bad -gt 0 ]; then
    echo "$bad of ${#files[@]} files; make format formats them"
    exit 1
fi
echo "${#files[@]} files are formatted"
