# What the commands need on the machine: Debian packages, which are installed when they are missing, and the .NET SDK.
# shellcheck shell=bash
readonly build_packages=(cmake ninja-build g++ libgtest-dev libgmock-dev nlohmann-json3-dev libcli11-dev libboost-dev)
readonly bench_packages=(libbenchmark-dev libisal-dev)
readonly check_packages=(clang clang-format clang-tidy libclang-rt-dev shellcheck)

require() { # <package>...
    if command -v dpkg-query >/dev/null && command -v apt-get >/dev/null; then
        require_dotnet
        install_missing_packages "$@"
    elif ! can_build_here; then
        fail "this system has no apt-get: install CMake 3.25, Ninja, a C++17 compiler, GoogleTest with GoogleMock, \
CLI11, JSON for Modern C++ (nlohmann_json), Boost and the .NET SDK 8.0 or newer, then run this again"
    else
        require_dotnet
    fi
}

install_missing_packages() { # <package>...
    local package missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    step "install ${missing[*]}" install install_packages "${missing[@]}"
}

is_installed() { # <package>
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# A package source that cannot be reached does not matter when the packages can be had all the same.
install_packages() { # <package>...
    as_root apt-get update
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install --yes --no-install-recommends "$@"
}

as_root() { # <command>...
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        printf 'Run this as root, or install sudo: %s\n' "$*"
        return 1
    fi
}

can_build_here() {
    command -v cmake >/dev/null && command -v ninja >/dev/null && command -v c++ >/dev/null &&
        printf '#include <%s>\n' gmock/gmock.h CLI/CLI.hpp nlohmann/json.hpp boost/version.hpp |
        c++ -std=c++17 -fsyntax-only -x c++ - 2>/dev/null
}

require_dotnet() {
    if ! command -v dotnet >/dev/null || ! dotnet --list-sdks 2>/dev/null | grep -qE '^([89]|[1-9][0-9]+)\.'; then
        fail "install the .NET SDK 8.0 or newer (https://dotnet.microsoft.com/download), so that 'dotnet' is on the \
PATH, and run this again"
    fi
    export DOTNET_CLI_TELEMETRY_OPTOUT=1 DOTNET_NOLOGO=1 DOTNET_SKIP_FIRST_TIME_EXPERIENCE=1
}
