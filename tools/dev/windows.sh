# ./dev test-windows
# shellcheck shell=bash
readonly windows_packages=(g++-mingw-w64-x86-64-posix mingw-w64-tools wine wine64 googletest)

test_windows() { # [ctest option]...
    require "${build_packages[@]}" "${windows_packages[@]}"
    prepare_windows
    build windows
    run_under_wine run_ctest windows test-windows "$@"
}

prepare_windows() {
    mkdir -p build/windows
    prepare_dotnet win-x64 "${dotnet_versions[10]}" build/windows/dotnet
}

run_under_wine() { # <command>...
    step "start Wine" windows-wine tools/dev/wine-prefix.sh start "$PWD/build/windows"
    trap 'tools/dev/wine-prefix.sh stop "$PWD/build/windows"' EXIT
    "$@"
}
