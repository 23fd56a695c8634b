#!/usr/bin/env bash
# Turns the addresses of a crash under Wine into functions and lines. Usage: tools/explain_crash.sh LOG BIN_FOLDER
# LOG is what the program printed; each frame reads "morvane (+0x30fe3)", or "  Morvane.dll+0x30fe3" as the soak says
# it. Prints the frames in our own modules.
set -euo pipefail
log=${1:?usage: tools/explain_crash.sh LOG BIN_FOLDER}
bin=${2:?usage: tools/explain_crash.sh LOG BIN_FOLDER}
frames=20

declare -A bases=()
tr -d '\r' <"$log" | sed -nE 's/^(=>|  ).*0x[0-9a-f]+ .*in ([a-z_0-9]+) \(\+0x([0-9a-f]+)\).*/\2 \3/p; s/^  ([A-Za-z_0-9]+)\.(dll|exe)\+0x([0-9a-f]+)$/\1 \3/p' | head -n $frames |
    while read -r module offset; do
        file=$(find "$bin" -maxdepth 1 \( -iname "$module.dll" -o -iname "$module.exe" \) | head -n 1)
        [ -n "$file" ] || continue
        if [ -z "${bases[$module]:-}" ]; then
            bases[$module]=$(x86_64-w64-mingw32-objdump -p "$file" | sed -nE 's/^ImageBase\s+([0-9a-f]+).*/\1/p')
        fi
        x86_64-w64-mingw32-addr2line -f -C -p -e "$file" "$(printf '0x%x' $((16#${bases[$module]} + 16#$offset)))" |
            sed "s#$PWD/##; s#^#  #" | cut -c 1-200
    done
