#!/usr/bin/env bash
# Unpacks the archives for Windows and uses them under Wine as a user does, on a machine without .NET.
#   check.sh <folder of the archives> <build tree whose Wine is used> <folder to work in>
set -euo pipefail
# shellcheck source=tests/package/expectations.sh
. "$(dirname "${BASH_SOURCE[0]}")/../expectations.sh"
packages=$1 build=$2 work=$3/'Ablage für Velmora'
run=$(dirname "${BASH_SOURCE[0]}")/../../../cmake/mingw/wine-run.sh

unpack_to() { # <folder> <archive>
    mkdir -p "$1"
    cmake -E chdir "$1" cmake -E tar xf "$2"
    mv "$1"/*/* "$1/"
}

# An installation and a home for each folder; nothing names a .NET.
tessaport() { # <folder> [argument]...
    local folder=$1
    shift
    WINEPATH=Z:$folder/bin VELMORA_WINE_DOTNET_ROOT='' TESSAPORT_HOME=Z:$folder/home \
        "$run" "$build" "$folder/bin/tessaport.exe" "$@"
}

rm -rf "$3"
unpack_to "$work/archive" "$(find "$packages" -name '*-win-x64.zip')"
unpack_to "$work/complete" "$(find "$packages" -name '*-win-x64-complete.zip')"

tessaport "$work/complete" demo
tessaport "$work/complete" doctor || fail 'doctor of the complete archive found something'
expect_output 'velmora\dotnet' tessaport "$work/complete" doctor
expect_output 'Harbour Project' tessaport "$work/complete" drives
[ -s "$work/complete/bin/velmora/dotnet/LICENSE.TXT" ] || fail "the license of .NET is not in the complete archive"

expect_failure 'install the .NET runtime 8 or newer' tessaport "$work/archive" doctor
rm -rf "$3"
