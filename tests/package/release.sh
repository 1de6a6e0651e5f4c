#!/usr/bin/env bash
# Tries ./dev release in a repository of its own: what it refuses, a dry run, a release, and one that fails. What takes
# minutes, such as building packages, is replaced.
#   release.sh <root of the repository> <folder to work in>
set -euo pipefail
source=$1 work=$2
export GIT_CONFIG_GLOBAL=/dev/null GIT_CONFIG_SYSTEM=/dev/null
export GIT_AUTHOR_NAME=Test GIT_AUTHOR_EMAIL=test@velmora.example GIT_COMMITTER_NAME=Test GIT_COMMITTER_EMAIL=test@velmora.example

fail_test() { # <message>
    printf 'FAILED: %s\n' "$1" >&2
    exit 1
}

# A repository with what a release reads and changes.
make_repository() {
    rm -rf "$work"
    mkdir -p "$work/tools/dev" "$work/velmora"
    cp "$source/dev" "$work/"
    cp "$source"/tools/dev/*.sh "$work/tools/dev/"
    cp "$source/velmora/Version.h" "$work/velmora/"
    sed -i -E 's/^(#define VELMORA_VERSION_MINOR ).*/\11/; s/^(#define VELMORA_VERSION_(MAJOR|PATCH) ).*/\10/' \
        "$work/velmora/Version.h"
    printf '# Changelog\n\n## [Unreleased] 0.1.0\n\n### Added\n\n- A thing.\n' >"$work/CHANGELOG.md"
    printf '/build/\n' >"$work/.gitignore"
    cd "$work"
    git init --quiet
    git add --all
    git commit --quiet --message 'Begin'
}

run_in_release() { # <commands> [argument]...
    local commands=$1
    shift
    bash -c '
        set -euo pipefail
        . tools/dev/steps.sh; . tools/dev/packages.sh; . tools/dev/site.sh; . tools/dev/release.sh
        '"$commands" bash "$@" 2>&1
}

# The command with stand-ins for what builds.
run_release() { # <package command> [argument]...
    local package=$1
    shift
    # shellcheck disable=SC2016 # The inner shell expands it.
    run_in_release '
        check_abi() { :; }
        record_abi() { echo recorded >abi; git add abi; }
        docs() { mkdir -p "$site_folder/html"; echo site >"$site_folder/html/index.html"; }
        # As the real one, which ends Wine in the end.
        package_windows() {
            trap true EXIT
            mkdir -p "$windows_packages_folder"
            echo "$(current_version)" >"$windows_packages_folder/library.zip"
        }
        package() { mkdir -p "$packages_folder"; echo "$(current_version)" >"$packages_folder/library.deb"; '"$package"'; }
        release "$@"' "$@"
}

expect_refusal() { # <part of the message> [argument]...
    local wanted=$1 output before
    shift
    before=$(git rev-parse HEAD)
    ! output=$(./dev release "$@" 2>&1) || fail_test "'release $*' is accepted: $output"
    [[ $output == *"$wanted"* ]] || fail_test "'release $*' is refused with: $output"
    [ "$(git rev-parse HEAD)" = "$before" ] || fail_test "'release $*' was refused and made a commit"
}

expect_clean() {
    [ -z "$(git status --porcelain)" ] || fail_test "$1 leaves changes: $(git status --porcelain)"
}

make_repository
expect_refusal 'is not a version'
expect_refusal 'is not a version' 1.2
expect_refusal 'is not a version' 01.2.3
expect_refusal "there is no option '--fast'" 0.2.0 --fast
expect_refusal "there is no option 'none'" 0.2.0 none
expect_refusal "there is no option ''" 0.2.0 ''
expect_refusal "there is no option '--fast'" 0.2.0 --dry-run --fast
expect_refusal 'is not newer than 0.1.0, that of velmora/Version.h' 0.0.9
touch new
expect_refusal 'not committed' 0.2.0
rm new
echo >>velmora/Version.h
expect_refusal 'not committed' 0.2.0
git checkout --quiet .

output=$(./dev release 0.10.0 --dry-run 2>&1) || fail_test "the dry run fails: $output"
[[ $output == *'+#define VELMORA_VERSION_MINOR 10'* && $output == *"+## [0.10.0] - "* ]] || fail_test "the dry run shows: $output"
expect_clean 'the dry run'
[ -z "$(git tag)" ] || fail_test 'the dry run makes a tag'

begin=$(git rev-parse HEAD)
! output=$(run_release 'docs() { fail "the site is wrong"; }' 0.1.0) || fail_test "a release succeeds without a site: $output"
[[ $output == *'the site is wrong'*'nothing is released'* ]] || fail_test "a failure of the last step prints: $output"
expect_clean 'a release whose last step fails'
[ "$(git rev-parse HEAD)$(git tag)" = "$begin" ] || fail_test 'a release whose last step fails leaves a commit or a tag'
! output=$(run_release 'fail "the packages are wrong"' 0.1.0) || fail_test "a release succeeds without packages: $output"
[[ $output == *'the packages are wrong'* && $output == *'nothing is released'* ]] || fail_test "a failure prints: $output"
expect_clean 'a release that fails'
[ "$(git rev-parse HEAD)$(git tag)" = "$begin" ] || fail_test 'a release that fails leaves a commit or a tag'

output=$(run_release : 0.1.0) || fail_test "the release fails: $output"
expect_clean 'the release'
[ "$(git log -1 --format=%s)" = 'Release 0.1.0' ] || fail_test "the commit is: $(git log -1)"
[ "$(git rev-parse 'v0.1.0^{commit}')" = "$(git rev-parse HEAD)" ] || fail_test 'the tag is not at the release'
grep -qx 'recorded' abi || fail_test 'the binary interface is not recorded'
(cd build/release-0.1.0 && sha256sum --quiet --check SHA256SUMS) || fail_test 'the checksums are wrong'
[ "$(cd build/release-0.1.0 && echo ./*)" = './SHA256SUMS ./VelmoraTessaport-0.1.0-site.tar.gz ./library.deb ./library.zip' ] ||
    fail_test "the release has: $(ls build/release-0.1.0)"

# The site again, built later by another user with other habits.
site=VelmoraTessaport-0.1.0-site.tar.gz
chmod -R go= build/docs/site/html
touch --date='2033-03-03' build/docs/site/html/index.html
[ "$(id -u)" -ne 0 ] || chown -R 4321:4321 build/docs/site/html
# shellcheck disable=SC2016 # The inner shell expands it.
run_in_release 'umask 077; collect_release 0.1.0 "$PWD/build/again"' || fail_test 'the files cannot be collected again'
cmp "build/release-0.1.0/$site" "build/again/$site" || fail_test 'the archive of the site depends on who packs it and when'
! tar --list --verbose --numeric-owner --file "build/again/$site" | grep -v ' 0/0 ' ||
    fail_test 'the archive of the site has the user who packed it'

expect_refusal 'the tag v0.1.0 exists already' 0.1.0
expect_refusal 'lists no change' 0.2.0
sed -i 's/^## \[Unreleased\]/&\n\n### Fixed\n\n- Another thing./' CHANGELOG.md
git commit --quiet --all --message 'Fix a thing'
run_release : 0.9.0 >/dev/null || fail_test 'the second release fails'
[ "$(cat build/release-0.9.0/library.deb)" = 0.9.0 ] || fail_test 'the packages have another version'
expect_refusal 'is not newer than 0.9.0, which is released' 0.8.7
