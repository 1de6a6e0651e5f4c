# ./dev package
# shellcheck shell=bash
readonly packages_folder=$PWD/build/packages
readonly chroot_folder=$PWD/build/chroot
# What the chroot has besides apt: what the README names to build a host, and what shows man pages and completes commands.
readonly chroot_packages=bash-completion,cmake,g++,make,man-db,pkgconf
# Made once for each list of packages.
readonly chroot_archive=$chroot_folder/$chroot_packages.tar

package() { # [--unchecked]
    require "${build_packages[@]}" "${package_packages[@]}"
    use_source_date
    rm -rf "$packages_folder"
    case ${1:-} in
        '') ;;
        --unchecked)
            make_packages debian
            make_packages archive
            list_contents
            return
            ;;
        *) fail "there is no option '$1'; ./dev help lists them" 2 ;;
    esac
    # It mostly waits for the network.
    step "chroot with a compiler" package-chroot make_chroot_archive &
    local chroot=$!
    make_packages debian
    make_packages archive
    list_contents
    step "lintian" package-lintian check_with_lintian
    require_dotnet_root linux-x64 "${dotnet_versions[8]}" build/dotnet-8
    wait "$chroot"
    step "packages and archive in the chroot" package-check check_in_chroot
    say "in build/packages"
    find "$packages_folder" -maxdepth 1 -type f -printf '   %f\n' | sort
}

# Packages carry the time of the last commit, not that of their build. A tree without its history is told it.
use_source_date() {
    SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
    export SOURCE_DATE_EPOCH
}

make_packages() { # <preset>
    configure "$1"
    build "$1"
    step "pack $1" "package-$1" cpack --config "build/$1/CPackConfig.cmake" -B "$packages_folder"
    rm -rf "$packages_folder/_CPack_Packages"
}

list_contents() {
    step "SPDX documents" package-spdx tools/dev/spdx.py . "$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' \
        build/archive/CMakeCache.txt)" "$packages_folder"/*.deb "$packages_folder"/*.tar.gz
}

check_with_lintian() {
    lintian --allow-root --fail-on error,warning "$packages_folder"/*.deb
}

make_chroot_archive() {
    local codename
    codename=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
    [ ! -e "$chroot_archive" ] || return 0
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
            "$root/check/" &&
        as_root unshare --mount --pid --fork --root="$root" --wd=/check --mount-proc \
            env --ignore-environment PATH="$PATH" HOME=/root LANG=C.UTF-8 ./check.sh ||
        status=$?
    as_root rm -rf "$root"
    return "$status"
}
