# ./dev package and ./dev package-windows
# shellcheck shell=bash
readonly packages_folder=$PWD/build/packages
readonly windows_packages_folder=$PWD/build/packages-windows
readonly chroot_folder=$PWD/build/chroot
# What the chroot has besides apt: what the README names to build a host, and what shows man pages and completes commands.
readonly chroot_packages=bash-completion,cmake,g++,make,man-db,pkgconf
# Made once for each list of packages.
readonly chroot_archive=$chroot_folder/$chroot_packages.tar

package() { # [--unchecked]
    local chroot
    check_package_options "$@"
    require "${tool_packages[@]}" "${package_packages[@]}"
    use_source_date
    if [ $# -eq 0 ]; then
        # It mostly waits for the network.
        step "chroot with a compiler" package-chroot make_chroot_archive &
        chroot=$!
    fi
    rm -rf "$packages_folder"
    build_to_pack debian
    pack build/package "$packages_folder"
    build_to_pack archive
    pack_archives build/package "$packages_folder" linux-x64 build/dotnet-10
    list_contents "$packages_folder"
    [ $# -eq 0 ] || return 0
    step "lintian" package-lintian check_with_lintian
    require_dotnet_root linux-x64 "${dotnet_versions[8]}" build/dotnet-8
    wait "$chroot"
    step "packages and archives in the chroot" package-check check_in_chroot
    show_packages "$packages_folder"
}

package_windows() { # [--unchecked]
    check_package_options "$@"
    prepare_windows
    require "${package_packages[@]}"
    use_source_date
    rm -rf "$windows_packages_folder"
    build_to_pack archive-windows
    pack_archives build/archive-windows "$windows_packages_folder" win-x64 "$windows_folder/dotnet"
    list_contents "$windows_packages_folder"
    [ $# -eq 0 ] || return 0
    run_under_wine step "archives under Wine" package-windows-check \
        tests/package/windows/check.sh "$windows_packages_folder" "$windows_folder" "$PWD/build/packages-windows-check"
    show_packages "$windows_packages_folder"
}

check_package_options() { # [option]...
    [ $# -eq 0 ] || [ "$*" = --unchecked ] || fail "there is no option '$*'; ./dev help lists them" 2
}

# Packages carry the time of the last commit, not that of their build. A tree without its history is told it.
use_source_date() {
    SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
    export SOURCE_DATE_EPOCH
}

# The presets debian and archive share a build tree, so that everything is compiled once, and differ in what is installed.
build_to_pack() { # <preset>
    configure "$1"
    step "build $1" "build-$1" cmake --build --preset "$1"
}

pack() { # <build tree> <folder> [cpack option]...
    local tree=$1 folder=$2
    shift 2
    step "pack into ${folder#"$PWD"/}${1:+, with .NET}" package-pack run_cpack --config "$tree/CPackConfig.cmake" -B "$folder" "$@"
    rm -rf "$folder/_CPack_Packages"
}

# Packages have the modes of the files that cpack makes, whatever the umask of the user.
run_cpack() { # <cpack option>...
    (umask 022 && cpack "$@")
}

# The archive, and the complete one with the .NET runtime that the managed parts are precompiled for.
pack_archives() { # <build tree> <folder> <platform of .NET> <folder of .NET>
    pack "$1" "$2"
    require_dotnet_root "$3" "${dotnet_versions[10]}" "$4"
    pack "$1" "$2" -D "VELMORA_DOTNET=$(realpath "$4")"
}

# An SPDX document beside each package.
list_contents() { # <folder>
    step "SPDX documents" package-spdx tools/dev/spdx.py . "$(current_version)" "$1"/*
}

show_packages() { # <folder>
    say "in ${1#"$PWD"/}"
    find "$1" -maxdepth 1 -type f -printf '   %f\n' | sort
}

check_with_lintian() {
    lintian --allow-root --fail-on error,warning "$packages_folder"/*.deb
}

make_chroot_archive() {
    local codename
    codename=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    [ ! -e "$chroot_archive" ] || return 0
    # Images for containers come without the lists that name the sources.
    [ -n "$(debian_sources)" ] || as_root apt-get update || return 1
    mkdir -p "$chroot_folder" &&
        debian_sources | as_root mmdebstrap --variant=apt --include="$chroot_packages" --format=tar \
            "$codename" "$chroot_archive.part" - &&
        as_root chown "$(id -u)" "$chroot_archive.part" &&
        mv "$chroot_archive.part" "$chroot_archive"
}

# The package sources of Debian that this machine uses.
debian_sources() {
    # shellcheck disable=SC2016 # apt-get expands it.
    apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
        sort --unique
}

# Nothing of this machine is seen there but a copy of what the check needs.
check_in_chroot() {
    local root=$chroot_folder/root status=0
    as_root rm -rf "$root" &&
        mkdir -p "$root" &&
        as_root tar --extract --file "$chroot_archive" --directory "$root" &&
        as_root mkdir "$root/check" &&
        as_root cp -r "$packages_folder" build/dotnet-8 examples/host tests/package/consumer tests/package/debian/. \
            tests/package/expectations.sh "$root/check/" &&
        as_root unshare --mount --pid --fork --root="$root" --wd=/check --mount-proc \
            env --ignore-environment PATH="$PATH" HOME=/root LANG=C.UTF-8 ./check.sh ||
        status=$?
    as_root rm -rf "$root"
    return "$status"
}
