#!/usr/bin/env bash
# Runs one Windows program in our own Wine prefix, as the tests do: on a virtual display of its own, unless
# MORVANE_DISPLAY names one to use. Usage: tools/under_wine.sh PROGRAM [ARGUMENT...]
# For a script that needs such an environment: tools/under_wine.sh --script COMMAND [ARGUMENT...]
set -euo pipefail
# shellcheck source=tools/wine_env.sh
. "$(dirname "$0")/wine_env.sh"

launcher=(wine)
if [ "${1:-}" = --script ]; then
    launcher=()
    shift
fi
[ $# -gt 0 ] || { sed -n '2,4s/^# //p' "$0" >&2; exit 2; }

trap end_wine EXIT
if [ -n "${MORVANE_DISPLAY:-}" ]; then
    export DISPLAY=$MORVANE_DISPLAY
else
    use_own_display
fi
use_wine_prefix
"${launcher[@]}" "$@"
