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

# Wine's desktop goes when no program runs, and comes back by whichever needs it, with that one's pipes open: whoever reads
# from those waits for the desktop. A command interpreter that waits for ever keeps the first desktop.
keep_desktop() {
    rm -f "$WINEPREFIX/keyboard"
    mkfifo "$WINEPREFIX/keyboard"
    "$here/wine-run.sh" "$build_folder" cmd <>"$WINEPREFIX/keyboard" >/dev/null 2>&1 &
    wine wineboot
}

case $action in
    start)
        [ -e "$WINEPREFIX/complete" ] || make_prefix
        status=0
        "$WINESERVER" --persistent </dev/null >/dev/null 2>&1 || status=$?
        case $status in
            0) keep_desktop ;;
            2) ;; # It runs already.
            *) exit "$status" ;;
        esac
        ;;
    stop) "$WINESERVER" --kill || true ;;
    *)
        echo "wine-prefix.sh: there is no action '$action'; there are start and stop" >&2
        exit 2
        ;;
esac
