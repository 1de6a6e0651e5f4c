# ./dev check reproducible
# shellcheck shell=bash
readonly reproducible_folder=$PWD/build/reproducible
readonly reproducible_packages=(diffoscope-minimal faketime)

# Two builds of everything that ./dev package makes, in folders of different lengths, by different users with different habits, in
# different years: what they make is equal bit by bit.
check_reproducible() {
    local first="$reproducible_folder/one" second="$reproducible_folder/another place"
    require "${build_packages[@]}" "${package_packages[@]}" "${reproducible_packages[@]}"
    use_source_date
    rm -rf "$first" "$second"
    copy_sources "$first"
    copy_sources "$second"
    step "first build of the packages" reproducible-1 build_in "$first" 022 env TZ=UTC LC_ALL=C.UTF-8
    # .NET waits by the monotonic clock and ends if that one is wrong. The times of files stay those that programs set.
    step "second build of the packages" reproducible-2 build_in "$second" 002 env TZ=Asia/Tokyo LC_ALL=C NO_FAKE_STAT=1 \
        unshare --user --map-user=4321 --map-group=4321 faketime --exclude-monotonic -f +400d
    step "comparison of the packages" reproducible-compare compare_folders "$first/build/packages" "$second/build/packages"
}

copy_sources() { # <folder>
    mkdir -p "$1"
    sources | tar --create --files-from=- | tar --extract --directory "$1"
}

# Each build has a compiler cache of its own, so that nothing comes from the other one; the next check finds it again. Both use
# the same packages of NuGet, by different paths.
build_in() { # <folder> <umask> <command that runs the build>...
    local folder=$1 mask=$2
    shift 2
    local variables=(HOME="$folder/home" NUGET_PACKAGES="$folder/nuget" CCACHE_BASEDIR="$folder" CCACHE_NOHASHDIR=1
        CCACHE_DIR="$reproducible_folder/cache of $(basename "$folder")")
    mkdir -p "$folder/home" &&
        ln -s "${NUGET_PACKAGES:-$HOME/.nuget/packages}" "$folder/nuget" &&
        (cd "$folder" && umask "$mask" && env "${variables[@]}" "$@" ./dev package --unchecked)
}

compare_folders() { # <folder> <other folder>
    local name names status=0
    diff <(ls "$1") <(ls "$2") || status=1
    names=("$1"/*)
    for name in "${names[@]##*/}"; do
        compare_files "$1/$name" "$2/$name" || status=1
    done
    return "$status"
}

compare_files() { # <file> <other file>
    if cmp "$1" "$2"; then
        printf 'equal: %s\n' "$(basename "$1")"
    else
        diffoscope --max-report-size 20000 --max-text-report-size 20000 "$1" "$2"
    fi
}
