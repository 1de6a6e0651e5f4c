# What the commands need on the machine: Debian packages, which are installed if they are missing, and the .NET SDK.
# shellcheck shell=bash
readonly tool_packages=(cmake ninja-build g++ nlohmann-json3-dev libcli11-dev libboost-dev)
# What the tests and examples need besides.
readonly build_packages=("${tool_packages[@]}" libgtest-dev libgmock-dev libgumbo-dev qt6-base-dev)
# A font for windows, which every desktop has and a container may lack.
readonly window_packages=(fonts-dejavu-core)
# The shells in which the tests complete commands, and what they call besides.
readonly test_packages=(abigail-tools fish fuse3 git pkgconf python3 rclone zsh "${window_packages[@]}")
# What makes the site of the documents.
readonly site_packages=(doxygen doxygen-awesome-css)
readonly browser_packages=(chromium chromium-driver fonts-dejavu-core python3-selenium)
# The compiler cache, because the packages and the archive are built of the same objects.
readonly package_packages=(ccache dpkg-dev file help2man lintian mmdebstrap python3 zip "${site_packages[@]}")
readonly bench_packages=(git libbenchmark-dev libisal-dev rsync)
readonly check_packages=(abigail-tools clang clang-format libc++-dev libc++abi-dev libclang-rt-dev shellcheck)
readonly windows_packages=(g++-mingw-w64-x86-64-posix mingw-w64-tools wine wine64 googletest zip "${site_packages[@]}")
declare -rA dotnet_versions=([8]=8.0.31 [10]=10.0.12)

require() { # <package>...
    if command -v dpkg-query >/dev/null && command -v apt-get >/dev/null; then
        require_dotnet
        install_missing_packages "$@"
    elif ! can_build_here; then
        fail "this system has no apt-get: install CMake 3.25, Ninja, a C++17 compiler, GoogleTest with GoogleMock, \
CLI11, JSON for Modern C++ (nlohmann_json), Boost, Gumbo, Qt 6.4 and the .NET SDK 8.0 or newer, then run this again"
    else
        require_dotnet
    fi
}

# The version that the rules are written for, from Debian's security updates; any other system's own. Needs package lists.
lint_package() {
    if apt-cache show clang-tidy-22 >/dev/null 2>&1; then
        echo clang-tidy-22
    else
        echo clang-tidy
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

# An unreachable package source does not matter if the other sources have the packages.
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
        printf '#include <%s>\n' gmock/gmock.h CLI/CLI.hpp nlohmann/json.hpp boost/version.hpp gumbo.h |
        c++ -std=c++17 -fsyntax-only -x c++ - 2>/dev/null
}

require_dotnet() {
    if ! command -v dotnet >/dev/null || ! dotnet --list-sdks 2>/dev/null | grep -qE '^([89]|[1-9][0-9]+)\.'; then
        fail "install the .NET SDK 8.0 or newer (https://dotnet.microsoft.com/download), so that 'dotnet' is on the \
PATH, and run this again"
    fi
    export DOTNET_CLI_TELEMETRY_OPTOUT=1 DOTNET_NOLOGO=1 DOTNET_SKIP_FIRST_TIME_EXPERIENCE=1
}

# From now on, programs that look for .NET find this version of it and no other.
use_dotnet() { # <major version>
    local version=${dotnet_versions[${1:-none}]:-}
    [ -n "$version" ] || fail "there is no .NET '${1:-}' to test with; there are: ${!dotnet_versions[*]}" 2
    require_dotnet_root linux-x64 "$version" "build/dotnet-$1"
    export DOTNET_ROOT=$PWD/build/dotnet-$1
}

require_dotnet_root() { # <platform, such as linux-x64> <version> <folder>
    step ".NET $2 for $1" "dotnet-$1-$2" make_dotnet_root "$@"
}

# Lays out a .NET installation with its license from NuGet's runtime pack; the host pack stays in the package cache. Does
# nothing if the folder contains that version already. The folder contains nothing else, because it is distributed as it is.
make_dotnet_root() { # <platform> <version> <folder>
    local platform=$1 version=$2 folder=$3
    local packages=${NUGET_PACKAGES:-$HOME/.nuget/packages} fxr=libhostfxr.so
    local pack=$packages/microsoft.netcore.app.runtime.$platform/$version
    local files=$pack/runtimes/$platform framework=$folder/shared/Microsoft.NETCore.App/$version
    [ ! -e "$folder.complete-$version" ] || [ ! -d "$packages/microsoft.netcore.app.host.$platform/$version" ] || return 0
    [ "$platform" != win-x64 ] || fxr=hostfxr.dll
    fetch_dotnet_packs "$platform" "$version" "$packages" &&
        rm -rf "$folder" "$folder".complete-* &&
        mkdir -p "$folder/host/fxr/$version" "$framework" &&
        cp --no-preserve=mode "$files"/lib/net*/* "$files"/native/* "$framework/" &&
        mv "$framework/$fxr" "$folder/host/fxr/$version/" &&
        cp --no-preserve=mode "$pack/LICENSE.TXT" "$pack/THIRD-PARTY-NOTICES.TXT" "$folder/" &&
        if [ "$platform" != win-x64 ]; then chmod +x "$framework/createdump"; fi &&
        touch "$folder.complete-$version"
}

# The SDK restores packages for a project only; this one has nothing else in it.
fetch_dotnet_packs() { # <platform> <version> <package cache>
    local project=build/dotnet-packs/packs.csproj
    mkdir -p "$(dirname "$project")" &&
        cat >"$project" <<TEXT &&
<Project Sdk="Microsoft.NET.Sdk">
  <PropertyGroup>
    <TargetFramework>net8.0</TargetFramework>
    <EnableDefaultItems>false</EnableDefaultItems>
    <DisableImplicitFrameworkReferences>true</DisableImplicitFrameworkReferences>
    <NuGetAudit>false</NuGetAudit>
  </PropertyGroup>
  <ItemGroup>
    <PackageDownload Include="Microsoft.NETCore.App.Runtime.$1" Version="[$2]" />
    <PackageDownload Include="Microsoft.NETCore.App.Host.$1" Version="[$2]" />
  </ItemGroup>
</Project>
TEXT
        dotnet restore "$project" --packages "$3"
}

# Unpacks the sources of a Debian package, for libraries whose binary packages are for Linux only. Uses package lists of its
# own, because those of the machine rarely list sources. Does nothing if the folder contains the sources already.
require_debian_source() { # <package> <folder>
    step "sources of $1" debian-source get_debian_source "$@"
}

get_debian_source() { # <package> <folder>
    [ ! -e "$2/complete" ] || return 0
    local work list
    work=$(mktemp -d) && mkdir -p "$work/sources" "$work/lists/partial" "$work/cache/archives/partial" || return 1
    for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
        [ ! -e "$list" ] || sed -E 's/^deb([[:blank:]])/deb-src\1/; s/^Types:.*/Types: deb-src/' "$list" \
            >"$work/sources/$(basename "$list")"
    done
    local options=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$work/sources"
        -o "Dir::State::lists=$work/lists" -o "Dir::Cache=$work/cache" -o APT::Sandbox::User=)
    apt-get "${options[@]}" update &&
        (cd "$work" && apt-get "${options[@]}" source --download-only "$1") &&
        rm -rf "$2" && mkdir -p "$2" &&
        tar -xf "$work/"*.orig.tar.* -C "$2" --strip-components=1 &&
        touch "$2/complete"
    local status=$?
    rm -rf "$work"
    return "$status"
}
