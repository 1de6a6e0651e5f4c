#!/usr/bin/env bash
# Tries how ./dev package makes the chroot of its check, on a machine that has no package lists yet. What needs the network
# is replaced.
#   chroot.sh <root of the repository> <folder to work in>
set -euo pipefail
source=$1 work=$2

fail_test() { # <message>
    printf 'FAILED: %s\n' "$1" >&2
    exit 1
}

rm -rf "$work"
mkdir -p "$work"
cd "$work"
# shellcheck disable=SC2016 # The inner shell expands it.
output=$(bash -c '
    set -euo pipefail
    . "$1/tools/dev/steps.sh"; . "$1/tools/dev/packages.sh"
    as_root() { "$@"; }
    apt-get() {
        case $1 in
            update) touch lists ;;
            indextargets) [ ! -e lists ] || echo "deb http://archive.example/debian/ stable main" ;;
        esac
    }
    # Its last but one argument is the archive.
    mmdebstrap() { cat >sources; touch "${@: -2:1}"; }
    make_chroot_archive
    [ -e "$chroot_archive" ]' bash "$source" 2>&1) || fail_test "the chroot is not made: $output"
[ "$(cat sources)" = 'deb http://archive.example/debian/ stable main' ] || fail_test "the chroot has the sources: $(cat sources)"
