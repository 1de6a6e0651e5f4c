#!/bin/sh
# usage: wine-run.sh BUILD_FOLDER PROGRAM [ARGUMENT...]
# Runs a Windows program of a build tree under Wine, with the tree's own prefix (wine), .NET installation (dotnet) and the
# folders of the C++ runtime (wine-path), all of which ./dev test-windows makes.
build_folder=$1
shift
export WINEPREFIX="$build_folder/wine"
export WINELOADER=/usr/lib/wine/wine64
export WINESERVER=/usr/lib/wine/wineserver64
export WINEDEBUG="${WINEDEBUG:--all}"
export DISPLAY=
# Without it file names are plain ASCII.
export LC_ALL=C.UTF-8
read -r cxx_runtime <"$build_folder/wine-path" || exit 1
# WINEPATH replaces the folders of the DLLs, VELMORA_WINE_LIBRARIES comes before them.
export WINEPATH="${WINEPATH:-${VELMORA_WINE_LIBRARIES:+$VELMORA_WINE_LIBRARIES;}$cxx_runtime}"
export DOTNET_ROOT="${VELMORA_WINE_DOTNET_ROOT-Z:$build_folder/dotnet}"
# When a process exits, Wine ends its other threads wherever they are. One that is inside an allocation of the C library
# deadlocks if its end loads libgcc_s, and the process is killed without its exit code. Nothing is left to load this way.
export LD_PRELOAD=libgcc_s.so.1
# Wine cannot start a program if a random address has taken the one that it needs. Some containers forbid fixed addresses.
if setarch --addr-no-randomize true 2>/dev/null; then
    exec setarch --addr-no-randomize "$WINELOADER" "$@"
fi
exec "$WINELOADER" "$@"
