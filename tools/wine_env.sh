# Sourced by scripts that run Windows programs. Functions:
#   use_wine_prefix     sets the environment for our own Wine prefix, makes the prefix on first use (about 15 s)
#   use_own_display     starts a virtual display for this script and sets DISPLAY; it ends with the script
#   end_wine            ends what still runs in the prefix
# MORVANE_WINEPREFIX chooses another prefix, by default build/wine. A prefix is remade when its recipe changes.
# shellcheck shell=bash

wine_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
own_display_pid=

# Changed whenever fill_wine_prefix changes what a prefix holds.
wine_recipe=2

use_wine_prefix()
{
    export WINEPREFIX=${MORVANE_WINEPREFIX:-$wine_root/build/wine}
    export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
    if [ "$(cat "$WINEPREFIX/recipe" 2>/dev/null)" != "$wine_recipe" ]; then
        rm -rf "$WINEPREFIX"
        mkdir -p "$WINEPREFIX"
        fill_wine_prefix
        echo "$wine_recipe" > "$WINEPREFIX/recipe"
    fi
}

fill_wine_prefix()
{
    # The prefix is made without a display, so that nothing of it can show or ask.
    (
        unset DISPLAY
        wineboot -i
        wineserver -w
    ) >"$WINEPREFIX/make.log" 2>&1 </dev/null || { cat "$WINEPREFIX/make.log" >&2; return 1; }
    # Wine does not look where Debian keeps its fonts.
    cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    cat > "$WINEPREFIX/settings.reg" <<'REG'
REGEDIT4

; Without a window manager, managed windows would make each destroyed top-level window wait two seconds.
[HKEY_CURRENT_USER\Software\Wine\X11 Driver]
"Managed"="N"

; A crash prints where it happened and ends the program instead of showing a dialog.
[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000
REG
    wine regedit /S "$(winepath -w "$WINEPREFIX/settings.reg")" >>"$WINEPREFIX/make.log" 2>&1
    # Tahoma and its like have no Chinese, Japanese and Korean characters.
    local family
    for family in Tahoma "Microsoft Sans Serif" "MS Shell Dlg" Arial "Liberation Sans" "DejaVu Sans"; do
        wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' /v "$family" \
            /t REG_MULTI_SZ /d "NotoSansCJK-Regular.ttc,Noto Sans CJK SC" /f >>"$WINEPREFIX/make.log" 2>&1
    done
    wineserver -w
}

use_own_display()
{
    local where tries
    where=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1600x1200x24 -nolisten tcp 3>"$where" >/dev/null 2>&1 &
    own_display_pid=$!
    for tries in $(seq 100); do
        [ -s "$where" ] && break
        sleep 0.1
    done
    if [ ! -s "$where" ]; then
        rm -f "$where"
        echo "The virtual display (Xvfb) did not start." >&2
        return 1
    fi
    DISPLAY=:$(tr -d '\n' <"$where")
    export DISPLAY
    rm -f "$where"
}

end_wine()
{
    if [ -n "${WINEPREFIX:-}" ] && [ -d "$WINEPREFIX" ]; then
        wineserver -k 2>/dev/null || true # it may have ended by itself, which is no failure
    fi
    if [ -n "$own_display_pid" ]; then
        kill "$own_display_pid" 2>/dev/null
        wait "$own_display_pid" 2>/dev/null
        own_display_pid=
    fi
    return 0
}
