#!/usr/bin/env bash
# usage: debian-source.sh PACKAGE FOLDER
# Unpacks the sources of a Debian source package, of the release and from the places that this machine's own packages
# come from. Its package lists stay as they are. Nothing is done when the folder has the sources already.
set -euo pipefail
readonly package=$1 folder=$2
if [ -e "$folder/complete" ]; then
    exit 0
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/sources" "$work/lists/partial" "$work/cache/archives/partial" "$work/download"
readonly apt_options=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$work/sources"
    -o "Dir::State::lists=$work/lists" -o "Dir::Cache=$work/cache" -o APT::Sandbox::User=)

# The machine's lists name packages to install; the same places have their sources.
list_sources() {
    local list
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
        [ ! -e "$list" ] || sed -E 's/^deb([[:blank:]])/deb-src\1/; s/^Types:.*/Types: deb-src/' "$list" \
            >"$work/sources/$(basename "$list")"
    done
}

list_sources
apt-get "${apt_options[@]}" update
(cd "$work/download" && apt-get "${apt_options[@]}" source --download-only "$package")
rm -rf "$folder"
mkdir -p "$folder"
tar -xf "$work/download/"*.orig.tar.* -C "$folder" --strip-components=1
touch "$folder/complete"
