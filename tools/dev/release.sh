# ./dev release
# shellcheck shell=bash

# Everything but the push. A release that fails leaves the tree and the history as they were.
release() { # <version> [--dry-run]
    local version=${1:-} start folder
    check_release "$@"
    start=$(git rev-parse HEAD)
    # shellcheck disable=SC2064 # The commit of now.
    trap "undo_release $start" EXIT
    set_version "$version"
    set_changes "$version"
    if [ "${2:-}" = --dry-run ]; then
        git --no-pager diff
        return
    fi
    check_abi
    record_abi
    git commit --quiet --all --message "Release $version"
    package
    # In a shell of its own, which ends Wine when it exits, as this one takes back a release that failed.
    (package_windows)
    docs
    folder=$PWD/build/release-$version
    collect_release "$version" "$folder"
    git tag --annotate "v$version" --message "Velmora Tessaport $version"
    trap - EXIT
    say "in ${folder#"$PWD"/}; to publish it: git push origin HEAD v$version"
}

check_release() { # <version> [option]...
    local version=${1:-} option current newest
    [[ $version =~ ^(0|[1-9][0-9]*)(\.(0|[1-9][0-9]*)){2}$ ]] ||
        fail "'$version' is not a version: give three numbers, such as 1.2.3" 2
    for option in "${@:2}"; do
        [ "$option" = --dry-run ] || fail "there is no option '$option'; ./dev help lists them" 2
    done
    [ -z "$(git status --porcelain)" ] ||
        fail "the tree has changes that are not committed: commit or remove what 'git status' shows, and run this again"
    ! git rev-parse --quiet --verify "refs/tags/v$version" >/dev/null ||
        fail "the tag v$version exists already: give a newer version"
    newest=$(git tag --list 'v[0-9]*' | sed 's/^v//' | sort --version-sort | tail -n 1)
    [ -z "$newest" ] || is_newer "$version" "$newest" ||
        fail "version $version is not newer than $newest, which is released: give a newer version"
    # The first release may have the version that the headers have from the beginning.
    current=$(current_version)
    [ "$version" = "$current" ] || is_newer "$version" "$current" ||
        fail "version $version is not newer than $current, that of velmora/Version.h: give a newer version"
    grep -q '^## \[Unreleased\]' CHANGELOG.md ||
        fail "CHANGELOG.md has no heading '## [Unreleased]': describe there what users notice, and run this again"
    [ -n "$(unreleased_changes)" ] ||
        fail "CHANGELOG.md lists no change under '## [Unreleased]': describe what users notice, and run this again"
}

is_newer() { # <version> <other version>
    [ "$1" != "$2" ] && [ "$(printf '%s\n' "$1" "$2" | sort --version-sort | tail -n 1)" = "$1" ]
}

current_version() {
    sed -nE 's/^#define VELMORA_VERSION_(MAJOR|MINOR|PATCH) //p' velmora/Version.h | paste -sd .
}

unreleased_changes() { sed -n '/^## \[Unreleased\]/,/^## \[[0-9]/p' CHANGELOG.md | grep '^- ' || true; }

set_version() { # <version>
    local major minor patch
    IFS=. read -r major minor patch <<<"$1"
    sed -i -E -e "s/^(#define VELMORA_VERSION_MAJOR ).*/\1$major/" -e "s/^(#define VELMORA_VERSION_MINOR ).*/\1$minor/" \
        -e "s/^(#define VELMORA_VERSION_PATCH ).*/\1$patch/" velmora/Version.h
}

set_changes() { # <version>
    sed -i "s/^## \[Unreleased\].*/## [Unreleased]\n\n## [$1] - $(date --utc +%F)/" CHANGELOG.md
}

# What is published, with its checksums.
collect_release() { # <version> <folder>
    rm -rf "$2"
    mkdir -p "$2"
    find "$packages_folder" "$windows_packages_folder" -maxdepth 1 -type f -exec cp -t "$2" {} +
    pack_site "$2/VelmoraTessaport-$1-site.tar.gz"
    (cd "$2" && LC_ALL=C && sha256sum -- * >SHA256SUMS.part && mv SHA256SUMS.part SHA256SUMS)
}

# Depends on the site and the commit alone, not on who packs it, when and with which umask.
pack_site() { # <archive>
    use_source_date
    tar --create --sort=name --owner=0 --group=0 --numeric-owner --mode=u+rw,go-w,go+rX "--mtime=@$SOURCE_DATE_EPOCH" \
        --format=gnu --directory "$site_folder" html | gzip --no-name --best >"$1"
}

undo_release() { # <commit to return to>
    git reset --quiet --hard "$1"
    say "nothing is released; the tree is as it was"
}
