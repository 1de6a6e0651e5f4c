#!/bin/sh
# Compares the binary interface of a shared library, built with debug information, with a recorded one. Names may be added;
# everything else that differs is printed and is a failure.
set -eu
library=$1  # The library.
recorded=$2 # What record.sh has written.
shift 2     # The public headers follow.
folder=$(dirname "$0")

"$folder/record.sh" "$library" "$library.abi" "$@"
# Changes that abidiff calls harmless count: a renamed member breaks no program, but is one to decide on.
set -- --suppressions "$folder/suppressions.ini" --no-added-syms --harmless "$recorded" "$library.abi"
abidiff "$@" >"$library.txt" && exit
# Each changed type once; the complete report has every way to it.
abidiff --leaf-changes-only "$@" || true
cat >&2 <<TEXT
The binary interface of '$library' differs from '$recorded'; the complete report is in '$library.txt'.
Programs that were built with the last release would read wrong bytes or not start. Undo the change, or make it in a release
that raises SOVERSION or the version of the boundary, and record the new interface; docs/compatibility.md says how.
TEXT
exit 1
