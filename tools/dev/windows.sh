# ./dev test-windows, and Wine for ./dev bench-windows.
# shellcheck shell=bash
readonly windows_folder=$PWD/build/windows
# Changes whenever what make_wine_prefix does changes.
readonly wine_prefix_marker=$windows_folder/wine/made-2

test_windows() { # [ctest option]...
    prepare_windows
    build windows
    run_under_wine run_ctest windows test-windows "$@"
}

prepare_windows() {
    require "${build_packages[@]}" "${windows_packages[@]}"
    mkdir -p "$windows_folder"
    require_dotnet_root win-x64 "${dotnet_versions[10]}" "$windows_folder/dotnet"
    cxx_runtime_folders >"$windows_folder/wine-path"
}

# Where the DLLs are that every program of the cross compiler needs, as a PATH of Windows.
cxx_runtime_folders() {
    local name file folders=
    for name in libstdc++-6.dll libwinpthread-1.dll; do
        file=$(realpath "$(x86_64-w64-mingw32-g++-posix "-print-file-name=$name")")
        folders+=${folders:+;}Z:$(dirname "$file")
    done
    printf '%s\n' "${folders//\//\\}"
}

run_under_wine() { # <command>...
    step "start Wine" windows-wine start_wine
    trap 'wine_server --kill || true' EXIT
    "$@"
}

wine() { cmake/mingw/wine-run.sh "$windows_folder" "$@" </dev/null >/dev/null 2>&1; }

wine_server() { WINEPREFIX=$windows_folder/wine /usr/lib/wine/wineserver64 "$@" </dev/null >/dev/null 2>&1; }

# Keeps Wine's server running, so that a program starts in a tenth of a second instead of three.
start_wine() {
    [ -e "$wine_prefix_marker" ] || make_wine_prefix || return 1
    local status=0
    wine_server --persistent || status=$?
    case $status in
        0) keep_desktop ;;
        2) ;; # It is running already.
        *) return "$status" ;;
    esac
}

make_wine_prefix() {
    rm -rf "$windows_folder/wine"
    # Neither Wine's own .NET nor its browser is wanted. Only here: later .NET needs what this excludes.
    WINEDLLOVERRIDES=mscoree,mshtml= wine wineboot -i &&
        # Without this a program that crashes is handed to a debugger, and its exit code is lost.
        wine reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\AeDebug' /v Debugger /t REG_SZ /d '' /f &&
        # Windows need no screen.
        wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /t REG_SZ /d null /f &&
        # Allows paths longer than 260 characters.
        wine reg add 'HKLM\System\CurrentControlSet\Control\FileSystem' /v LongPathsEnabled /t REG_DWORD /d 1 /f &&
        wine_server --wait &&
        touch "$wine_prefix_marker"
}

# Wine's desktop ends when no program runs. The next program starts it again with its own pipes open, and whoever reads from
# those waits for the desktop. A command interpreter that waits forever keeps the first desktop.
keep_desktop() {
    local keyboard=$windows_folder/wine/keyboard
    rm -f "$keyboard" && mkfifo "$keyboard" || return 1
    cmake/mingw/wine-run.sh "$windows_folder" cmd <>"$keyboard" >/dev/null 2>&1 &
    wine wineboot
}
