#!/usr/bin/env bash
# usage: dotnet-root.sh RID VERSION FOLDER
# Lays out a .NET installation of a platform (win-x64, linux-x64) from NuGet's runtime pack, with the host pack beside it
# in the package cache. Nothing is done when the folder has that version already.
set -euo pipefail
readonly rid=$1 version=$2 folder=$3
packages=${NUGET_PACKAGES:-$HOME/.nuget/packages}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
pack=$packages/microsoft.netcore.app.runtime.$rid/$version/runtimes/$rid
host_pack=$packages/microsoft.netcore.app.host.$rid/$version
framework=$folder/shared/Microsoft.NETCore.App/$version

if [ -e "$folder/complete-$version" ] && [ -d "$host_pack" ]; then
    exit 0
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$here/runtime-packs.csproj" "$work/"
dotnet restore "$work/runtime-packs.csproj" --packages "$packages" "-p:PackRid=$rid" "-p:PackVersion=$version"

rm -rf "$folder"
mkdir -p "$folder/host/fxr/$version" "$framework"
case $rid in
    win-*) fxr=hostfxr.dll ;;
    *) fxr=libhostfxr.so ;;
esac
cp "$pack"/lib/net*/* "$pack"/native/* "$framework/"
mv "$framework/$fxr" "$folder/host/fxr/$version/"
touch "$folder/complete-$version"
