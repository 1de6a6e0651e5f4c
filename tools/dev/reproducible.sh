# ./dev check reproducible
# shellcheck shell=bash
readonly reproducible_folder=$PWD/build/reproducible
readonly reproducible_packages=(diffoscope-minimal faketime)

# Two builds of the packages, in folders of different lengths, by different users with different habits, in different years:
# what they make is equal bit by bit.
check_reproducible() {
    require "${build_packages[@]}" "${package_packages[@]}" "${reproducible_packages[@]}"
    use_source_date
    rm -rf "$reproducible_folder/one" "$reproducible_folder/another place"
    copy_sources "$reproducible_folder/one"
    copy_sources "$reproducible_folder/another place"
    step "first build of the packages" reproducible-1 \
        build_in "$reproducible_folder/one" 022 env TZ=UTC LC_ALL=C.UTF-8
    step "second build of the packages" reproducible-2 \
        build_in "$reproducible_folder/another place" 002 env TZ=Asia/Tokyo LC_ALL=C \
        unshare --user --map-user=4321 --map-group=4321 faketime -f +400d
    step "comparison of the packages" reproducible-compare compare_packages
}

copy_sources() { # <folder>
    mkdir -p "$1"
    sources | tar --create --files-from=- | tar --extract --directory "$1"
}

# Each build has a compiler cache of its own, so that nothing comes from the other one. The packages of NuGet are the same, by another path.
build_in() { # <folder> <umask> <command that runs the build>...
    local folder=$1 mask=$2
    shift 2
    mkdir -p "$folder/home" &&
        ln -s "${NUGET_PACKAGES:-$HOME/.nuget/packages}" "$folder/nuget" &&
        (cd "$folder" && umask "$mask" && HOME=$folder/home NUGET_PACKAGES=$folder/nuget CCACHE_BASEDIR=$folder CCACHE_NOHASHDIR=1 \
            CCACHE_DIR="$reproducible_folder/cache of $(basename "$folder")" "$@" ./dev package --unchecked)
}

compare_packages() {
    local one=$reproducible_folder/one/build/packages other="$reproducible_folder/another place/build/packages" status=0
    local -a names
    mapfile -t names < <(cd "$one" && printf '%s\n' ./*)
    [ ${#names[@]} -gt 1 ] && diff <(ls "$one") <(ls "$other") || return 1
    for name in "${names[@]}"; do
        if cmp "$one/$name" "$other/$name"; then
            printf 'equal: %s\n' "$name"
        else
            diffoscope --max-report-size 20000 --max-text-report-size 20000 "$one/$name" "$other/$name"
            status=1
        fi
    done
    return "$status"
}
