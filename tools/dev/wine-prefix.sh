#!/usr/bin/env bash
# usage: wine-prefix.sh start|stop BUILD_FOLDER
# start: makes the tree's Wine prefix when there is none and keeps its server running, so that a program starts in a
# tenth of a second instead of three. stop: ends that server and what still runs in it.
set -euo pipefail
readonly action=$1 build_folder=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
export WINEPREFIX=$build_folder/wine WINELOADER=/usr/lib/wine/wine64 WINESERVER=/usr/lib/wine/wineserver64
export WINEDEBUG=-all DISPLAY=

wine() { "$here/wine-run.sh" "$build_folder" "$@" </dev/null >/dev/null 2>&1; }

make_prefix() {
    rm -rf "$WINEPREFIX"
    # Neither Wine's own .NET nor its browser is wanted. Only here: later .NET needs what this keeps away.
    WINEDLLOVERRIDES=mscoree,mshtml= wine wineboot -i
    # Without this a program that crashes is handed to a debugger, and its exit code is lost.
    wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /t REG_SZ /d '' /f
    # Paths longer than 260 characters, as on a Windows where they are allowed.
    wine reg add 'HKLM\System\CurrentControlSet\Control\FileSystem' /v LongPathsEnabled /t REG_DWORD /d 1 /f
    "$WINESERVER" --wait
    touch "$WINEPREFIX/complete"
}

case $action in
    start)
        [ -e "$WINEPREFIX/complete" ] || make_prefix
        # It ends with 2 when it runs already.
        "$WINESERVER" --persistent </dev/null >/dev/null 2>&1 || [ $? -eq 2 ]
        wine wineboot
        ;;
    stop) "$WINESERVER" --kill || true ;;
    *)
        echo "wine-prefix.sh: there is no action '$action'; there are start and stop" >&2
        exit 2
        ;;
esac
