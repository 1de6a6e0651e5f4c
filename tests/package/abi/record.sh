#!/bin/sh
# Records the binary interface of a shared library, built with debug information, for compare.sh.
set -eu
library=$1  # The library.
recorded=$2 # The file to write.
shift 2     # The public headers follow. Types that they do not define are internal; no program depends on them.

rm -rf "$library.headers"
mkdir "$library.headers"
# abidw looks at their names only.
for header; do
    : >"$library.headers/$(basename "$header")"
done
abidw --headers-dir "$library.headers" --drop-private-types --exported-interfaces-only --no-corpus-path --no-comp-dir-path \
    --no-show-locs --no-parameter-names --out-file "$recorded" "$library"
