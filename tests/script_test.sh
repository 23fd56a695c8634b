# Sourced by test scripts that run a program under Wine, with the folder of the programs as its argument (or BIN): takes
# DISPLAY and WINEPREFIX when they are set and provides what is not. Variables:
#   bin     the folder of the programs
#   work    a folder of the test's own
#   app     to be set to the process that the test starts
# All of it, and that process, ends with the script. Functions:
#   report STATUS WHAT [DETAIL...]    counts a check and gives its status back; what failed is told with its details
#   within SECONDS COMMAND...         whether the command comes to succeed in that time
#   result                            prints "N passed, N failed"; to be the last command
# shellcheck shell=bash

tests_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck disable=SC2034  # for the tests
bin=$(cd "${1:-${BIN:?the folder with the programs}}" && pwd) || exit 2
# shellcheck source=tools/wine_env.sh
. "$tests_root/tools/wine_env.sh"

work=$(mktemp -d)
app=
clean_up()
{
    [ -z "$app" ] || kill "$app" 2>/dev/null
    [ -z "$own_display_pid" ] || kill "$own_display_pid" 2>/dev/null
    rm -rf "$work"
}
trap clean_up EXIT

[ -n "${DISPLAY:-}" ] || use_own_display || exit 1
[ -n "${WINEPREFIX:-}" ] || use_wine_prefix || exit 1
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="

passed=0
failed=0
report()
{
    local status=$1 what=$2
    shift 2
    if [ "$status" -eq 0 ]; then
        passed=$((passed + 1))
        echo "ok      $what"
    else
        failed=$((failed + 1))
        echo "FAILED  $what"
        [ $# -eq 0 ] || printf '%s\n' "$@" | sed 's/^/        /'
    fi
    return "$status"
}

within()
{
    local end=$((SECONDS + $1))
    shift
    until "$@"; do
        [ $SECONDS -lt $end ] || return 1
        sleep 0.2
    done
}

result()
{
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ]
}
