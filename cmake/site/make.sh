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

rm -rf "$site/html" "$site/pages"
mkdir -p "$site/pages/docs"
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
