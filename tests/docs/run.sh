#!/usr/bin/env bash
# run.sh BIN_FOLDER: the reference pages against the built library, and the samples they quote. Makes every page of
# docs/controls again and compares it with the committed one; checks that links lead somewhere; runs the samples, with the
# real pointer and registered where they need it. WINEPREFIX is used when set; ends with "N passed, N failed".
set -u
here=$(cd "$(dirname "$0")" && pwd)
tree=$(cd "$here/../.." && pwd)
bin=$(cd "${1:-${BIN:?usage: run.sh BIN_FOLDER}}" && pwd)
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 800x600x24" "$here/run.sh" "$bin"
fi
work=$(mktemp -d)
started=
prefix=
end()
{
    [ -n "$started" ] && kill "$started" 2>/dev/null
    [ -n "$prefix" ] && wineserver -k
    rm -rf "$work"
}
trap end EXIT
if [ -z "${WINEPREFIX:-}" ]; then
    prefix=$work/prefix
    export WINEPREFIX=$prefix
    wineboot -i >/dev/null 2>&1
fi

passed=0
failed=0
report() # STATUS WHAT
{
    if [ "$1" -eq 0 ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "FAILED  $2"
    fi
}

# Pages ---------------------------------------------------------------------------------------------------------------

compare_pages()
{
    local name committed=$tree/docs/controls
    mkdir "$work/pages"
    (cd "$bin" && wine describe.exe "$(winepath -w "$work/description.json")") &&
        python3 "$tree/tools/make_control_pages.py" "$work/description.json" "$work/pages"
    report $? "the library describes itself and the pages can be made"
    # Of both sides: a page that nothing makes any more is as wrong as a missing one.
    (cd "$work/pages" && ls -- *.md && cd "$committed" && ls -- *.md) | sort -u >"$work/names"
    while read -r name; do
        diff -uN --label "committed docs/controls/$name" --label "what the sources say" "$committed/$name" "$work/pages/$name"
        report $? "docs/controls/$name is up to date (tools/update_control_pages.sh makes it again)"
    done <"$work/names"
}

# Relative links and pictures of every page lead to a file.
check_links()
{
    python3 - "$tree" <<'END'
import re
import sys
from pathlib import Path

tree = Path(sys.argv[1])
pages = [tree / "README.md", tree / "CHANGELOG.md", *tree.glob("docs/**/*.md"), *tree.glob("samples/**/*.md")]
broken = 0
for page in pages:
    if page.parent.name == "_parts":
        continue
    for target in re.findall(r"\]\(([^)#\s]+)[^)]*\)", page.read_text(encoding="utf-8")):
        if "://" not in target and not (page.parent / target).exists():
            print(f"{page.relative_to(tree)}: there is no {target}")
            broken += 1
sys.exit(1 if broken else 0)
END
    report $? "links in the documentation lead somewhere"
}

# Samples -------------------------------------------------------------------------------------------------------------

wait_for_line() # TEXT FILE
{
    for _ in $(seq 100); do
        tr -d '\r' <"$2" | grep -qx "$1" && return 0
        sleep 0.1
    done
    return 1
}

press_minimal()
{
    local log=$work/minimal.log status=0
    (cd "$bin" && exec wine sample_minimal.exe >"$log" 2>/dev/null) &
    started=$!
    timeout 20 xdotool search --sync --onlyvisible --name '^Minimal$' >/dev/null
    sleep 0.5
    xdotool mousemove 300 190 mousemove 220 150 click 1
    wait_for_line "Pressed 1" "$log" && sleep 0.7 && xdotool click 1 && wait_for_line "Pressed 2" "$log"
    report $? "sample_minimal counts the presses of its button (log: $(tr -d '\r' <"$log" | tr '\n' ';'))"
    xdotool key alt+F4
    for _ in $(seq 50); do
        kill -0 "$started" 2>/dev/null || break
        sleep 0.1
    done
    kill -0 "$started" 2>/dev/null && status=1
    [ $status -eq 0 ] && started=
    report $status "sample_minimal ends when its window is closed"
}

run_scripts()
{
    local script output library
    for library in Morvane.dll Ambrel.dll; do
        (cd "$bin" && wine regsvr32 /s "$library")
    done
    for script in "$tree"/samples/jscript/*.js; do
        # The script host ends with 0 when a script ends in an exception: the last line decides.
        output=$(wine cscript //nologo "$(winepath -w "$script")" 2>&1 | tr -d '\r')
        [[ "$(tail -n 1 <<<"$output")" == *": passed" ]]
        report $? "samples/jscript/$(basename "$script"): $output"
    done
    for library in Morvane.dll Ambrel.dll; do
        (cd "$bin" && wine regsvr32 /s /u "$library")
    done
}

compare_pages
check_links
(cd "$bin" && wine sample_controls.exe >"$work/controls.log" 2>&1)
report $? "sample_controls finds what the pages say ($(tr -d '\r' <"$work/controls.log" | tr '\n' ';'))"
press_minimal
run_scripts

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
