#!/usr/bin/env bash
# Makes the site.
#   make.sh <root of the repository> <folder with Doxyfile; gets html> <doxygen> <public header>...
set -euo pipefail
source=$1 site=$2 doxygen=$3
shift 3
cd "$source"

page_files() { printf '%s\n' README.md CONTRIBUTING.md CHANGELOG.md THIRD-PARTY-NOTICES.md docs/*.md; }

# Each file that is in the site, with the name by which Doxygen knows it.
table() { # <public header>...
    local file name
    for file in $(page_files); do
        name=$(basename "$file" .md)
        case $file in
            docs/README.md) name=index ;;
            README.md) name=overview ;;
        esac
        printf '%s %s\n' "$file" "${name,,}"
    done
    grep -l '^/// @file$' "$@" | sed "s,^$PWD/,," | awk '{ print $0, $0 }'
    sed -n 's,^/\*! @example ,,p' cmake/site/examples.dox | awk '{ print "examples/" $0, $0 }'
}

# Doxygen names the page of a folder by a hash of its absolute path. The site is the same wherever it is made.
name_folders() {
    local file name
    for file in "$site"/html/dir_*.html; do
        name=$(sed -n 's,.*<title>[^:]*: \(.*\) Directory Reference</title>.*,\1,p' "$file")
        printf 's/%s/dir_%s/g\n' "$(basename "$file" .html)" "${name//\//_}"
        mv "$file" "$site/html/dir_${name//\//_}.html"
        # Only a folder with documented files has an index.
        [ ! -e "${file%.html}.js" ] || mv "${file%.html}.js" "$site/html/dir_${name//\//_}.js"
    done >"$site/folders.sed"
    grep -rlZ 'dir_[0-9a-f]\{32\}' "$site/html" | xargs -0 --no-run-if-empty sed -i -f "$site/folders.sed"
}

rm -rf "$site/html" "$site/pages"
mkdir -p "$site/pages/docs"
cp cmake/site/examples.dox "$site/pages/"
table "$@" >"$site/table"
status=0
for file in $(page_files); do
    awk -v file="$file" -v table="$site/table" -f cmake/site/page.awk "$file" >"$site/pages/$file" || status=1
done
[ "$status" -eq 0 ]
# Classes are listed by namespaces already.
"$doxygen" -l "$site/layout.xml"
sed -i 's/type="namespaces" visible="yes"/type="namespaces" visible="no"/' "$site/layout.xml"
"$doxygen" "$site/Doxyfile"
# What Doxygen did not understand it shows as it is, without a warning.
if grep -rnoE --include='*.html' --exclude='*_source.html' \
    '(@(ref|section|subpage) |\\ilinebr|&lt;(tt|table|tr|th|td)[ &]).{0,40}' "$site/html"; then
    printf 'The pages above show commands of Doxygen.\n' >&2
    exit 1
fi
name_folders
