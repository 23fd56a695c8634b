#!/usr/bin/env bash
# Installs what building and testing need and is missing. Usage: tools/setup.sh [build] [test] [lint] [coverage]
# Without arguments: build and test. Does nothing, quickly, when everything is there. Debian 12 and its relatives only;
# elsewhere it names what to install by hand. docs/dependencies.md says what each package is for.
set -euo pipefail

declare -A packages=(
    [build]="git make cmake ninja-build ccache python3 g++-mingw-w64-x86-64-posix mingw-w64-tools libwine-dev
             libz-mingw-w64-dev googletest librsvg2-bin clang libclang-rt-14-dev zlib1g-dev libpugixml-dev ca-certificates"
    [test]="wine wine64 fonts-wine fonts-liberation fonts-dejavu-core fonts-noto-cjk xvfb xauth xdotool imagemagick llvm-14"
    [lint]="clang-format clang-tidy"
    [coverage]="llvm llvm-14"
)

if [ $# -eq 0 ]; then
    set -- build test
fi
wanted=()
for group in "$@"; do
    # shellcheck disable=SC2206 # the list is split into words on purpose
    wanted+=(${packages[$group]:?"unknown group of packages: $group"})
done

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This machine has no apt. Install what these Debian packages hold, then set MORVANE_NO_SETUP=1:" >&2
    echo "  ${wanted[*]}" >&2
    [ -n "${MORVANE_NO_SETUP:-}" ] && exit 0
    exit 1
fi

installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null | sed -n 's/ installed$//p' || true)
missing=()
for package in "${wanted[@]}"; do
    grep -qx -- "$package" <<<"$installed" || missing+=("$package")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
if [ -n "${MORVANE_NO_SETUP:-}" ]; then
    echo "Missing packages, left alone because MORVANE_NO_SETUP is set: ${missing[*]}" >&2
    exit 0
fi

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "Missing packages: ${missing[*]}" >&2
        echo "Install them as root: apt-get update && apt-get install --no-install-recommends ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi
echo "Installing ${#missing[@]} packages: ${missing[*]}"
"${as_root[@]}" apt-get -qq update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o Dpkg::Use-Pty=0 -o Acquire::Retries=3 \
    install --no-install-recommends "${missing[@]}" </dev/null >/dev/null
