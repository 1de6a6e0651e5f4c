# ./dev test-windows
# shellcheck shell=bash
readonly windows_packages=(g++-mingw-w64-x86-64-posix mingw-w64-tools wine wine64 googletest)
readonly windows_dotnet_version=10.0.12

test_windows() { # [ctest option]...
    require "${build_packages[@]}" "${windows_packages[@]}"
    prepare_windows
    build windows
    run_under_wine run_ctest windows test-windows "$@"
}

prepare_windows() {
    mkdir -p build/windows
    step ".NET $windows_dotnet_version for Windows" windows-dotnet \
        tools/dev/dotnet-root.sh win-x64 "$windows_dotnet_version" build/windows/dotnet
}

run_under_wine() { # <command>...
    step "start Wine" windows-wine tools/dev/wine-prefix.sh start "$PWD/build/windows"
    trap 'tools/dev/wine-prefix.sh stop "$PWD/build/windows"' EXIT
    "$@"
}
