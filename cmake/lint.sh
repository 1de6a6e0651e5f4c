#!/usr/bin/env bash
# lint.sh <folder> <clang-tidy command> -- <compile command>
# Runs clang-tidy, which reports what the compiler would, instead of compiling. The compiler only preprocesses, which tells
# the build what the source includes. The folder records the preprocessed sources that passed, with comments, because some
# concern clang-tidy: a source that two targets compile alike is checked once.
set -euo pipefail
checked=$1 tidy=() flags=()
shift
while [ "$1" != -- ]; do
    tidy+=("$1")
    shift
done
shift
compile=("$@")
while [ $# -gt 1 ]; do
    case $1 in
        -o) object=$2 && shift ;;
        -MF | -MT) shift ;;
        -c | -MD) ;;
        *) flags+=("$1") ;;
    esac
    shift
done
source=$1 preprocessed=$object.ii

"${compile[@]}" -E -C -o "$preprocessed"
digest=$({ cat "$preprocessed" && printf '%s\n' "${tidy[@]}" && printf '%s\n' "${flags[@]}" | grep -E '^-(W|f|std)'; } | sha256sum)
rm "$preprocessed"
if [ ! -e "$checked/${digest%% *}" ]; then
    "${tidy[@]}" "$source" -- "${flags[@]:1}"
    touch "$checked/${digest%% *}"
fi
touch "$object"
