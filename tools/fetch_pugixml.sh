#!/bin/sh
# Fetches the sources of pugixml from Debian's source package and unpacks them, so that they can be compiled for a target
# for which Debian has no binary. Usage: fetch_pugixml.sh FOLDER
# On success FOLDER holds src/pugixml.cpp and its headers. A folder filled before is left alone.
set -eu

package=pugixml
version=1.13-0.2
archive=pugixml_1.13.orig.tar.gz
checksum=5c5ad5d7caeb791420408042a7d88c2c6180781bf218feca259fd9d840a888e1

folder=$1
if [ -f "$folder/src/pugixml.cpp" ]; then
    exit 0
fi
mkdir -p "$(dirname "$folder")"
work=$(mktemp -d "$folder.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/lists/partial" "$work/cache/archives/partial" "$work/unpacked"
echo "deb-src http://deb.debian.org/debian bookworm main" > "$work/sources.list"

# A sources list and a state folder of our own: the machine's package lists stay untouched.
private_apt() {
    apt-get -qq -oDir::Etc::sourcelist="$work/sources.list" -oDir::Etc::sourceparts=- \
        -oDir::State::Lists="$work/lists" -oDir::Cache="$work/cache" -oAPT::Sandbox::User= "$@"
}
private_apt update
(cd "$work" && private_apt source --download-only "$package=$version")

echo "$checksum  $work/$archive" | sha256sum --check --quiet -
tar -xzf "$work/$archive" -C "$work/unpacked" --strip-components=1
if ! mv -T "$work/unpacked" "$folder" 2>/dev/null; then
    # Another build put the same sources there in the meantime.
    test -f "$folder/src/pugixml.cpp"
fi
