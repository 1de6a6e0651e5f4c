#!/usr/bin/env bash
# What the layout of the tree promises and no compiler checks. Prints every line that breaks a promise.
set -euo pipefail
# So that the last part of a pipe counts into this shell.
shopt -s lastpipe
readonly longest_source=400
readonly longest_test=600

# The folders under velmora, and those that each may include. Every other include between two of them is an error.
declare -rA may_include=(
    [.]='platform'
    [text]=''
    [platform]='text'
    [api]='. platform text'
    [bridge/boundary]='text'
    [bridge/runtime]='api bridge/boundary platform text'
    [bridge/conversions]='api bridge/boundary text'
    [bridge]='api bridge/boundary bridge/conversions bridge/runtime platform text'
    [testkit]='api native platform'
    [native]='api bridge bridge/boundary bridge/runtime platform'
    [io]='io/crc text'
    [io/crc]=''
    [logging]='io text'
)
failures=0

tracked() { git ls-files --cached --others --exclude-standard -- "$@"; }

# Says what is promised and shows the lines that break it.
forbid() { # <promise>, lines on standard input
    local lines
    lines=$(cat)
    [ -n "$lines" ] || return 0
    printf '%s\n%s\n\n' "$1" "$lines"
    failures=$((failures + 1))
}

# Lines of the tracked files of the given patterns that match an expression.
lines_with() { # <expression> <file pattern>...
    git grep --untracked -nIE "$@" || true
}

# Each include of a header of velmora by another folder of it, as "<folder> <folder of the header> <line>".
includes_between_folders() {
    lines_with '#include [<"]velmora/' -- velmora | with_folders |
        sed -nE 's,^velmora/([^:]*)/[^/:]*:[0-9]+:#include [<"]velmora/([^">]*)/[^/">]*[">].*,\1 \2 &,p' |
        awk '$1 != $2'
}

# Writes paths of files directly under velmora with "." as their folder.
with_folders() { sed -E 's,(^|[<"])velmora/([^/:">]+($|[:">])),\1velmora/./\2,g'; }

# Each allowed include, as "<folder> <folder of the header>".
allowed_includes() {
    local from to
    for from in "${!may_include[@]}"; do
        for to in ${may_include[$from]}; do
            printf '%s %s\n' "$from" "$to"
        done
    done
}

check_includes() {
    local from to line includes
    includes=$(includes_between_folders)
    tracked 'velmora/*.h' 'velmora/*.cpp' | with_folders | sed -E 's,^velmora/(.*)/[^/]*,\1,' | sort -u | while read -r from; do
        [ -n "${may_include[$from]+known}" ] || echo "velmora/$from"
    done | forbid 'The table in tools/dev/layout.sh has every folder under velmora:'
    while read -r from to line; do
        [[ " ${may_include[$from]:-} " == *" $to "* ]] || echo "$line"
    done <<<"$includes" | forbid 'A folder includes only those that the table in tools/dev/layout.sh allows:'
    allowed_includes | while read -r from to; do
        grep -q "^$from $to " <<<"$includes" || echo "$from: $to"
    done | forbid 'The table in tools/dev/layout.sh allows only what is used:'
    { allowed_includes | tsort >/dev/null; } 2>&1 | forbid 'The table in tools/dev/layout.sh has no circle:'
    lines_with '#include [<"](tests|tools|bench|fuzz|examples|\.\.)/' -- velmora |
        forbid 'The library includes nothing outside it, and headers by their path from the root:'
}

check_headers() {
    local header
    for header in $(tracked '*.h'); do
        grep -q '^#pragma once$' "$header" || echo "$header"
    done | forbid 'A header has #pragma once:'
    lines_with '^using namespace' -- '*.h' | forbid 'A header contains no using namespace:'
    lines_with '\bm_[a-z]' -- '*.h' '*.cpp' | forbid 'Members have no prefix:'
}

# The formatter of .NET leaves the order of using directives alone.
check_using_directives() {
    # shellcheck disable=SC2016 # awk expands it.
    tracked '*.cs' | LC_ALL=C xargs awk '
        FNR == 1 { last = "" }
        /^using [A-Z][A-Za-z.]*;$/ {
            name = substr($2, 1, length($2) - 1)
            key = (name ~ /^System(\.|$)/ ? 0 : 1) name
            if (key < last) print FILENAME ":" FNR ": " $0
            last = key
        }' | forbid 'Using directives are sorted, those of System first:'
}

check_lengths() {
    longer_than "$longest_source" 'velmora/*' 'managed/*' 'tools/*' 'cmake/*' '*CMakeLists.txt' dev |
        forbid "A source file has at most $longest_source lines:"
    longer_than "$longest_test" 'tests/*' ':!*.abi' 'bench/*' 'fuzz/*.cpp' |
        forbid "A test or benchmark has at most $longest_test lines:"
}

longer_than() { # <lines> <file pattern>...
    local most=$1 file length
    shift
    for file in $(tracked "$@"); do
        length=$(wc -l <"$file")
        [ "$length" -le "$most" ] || echo "$file: $length lines"
    done
}

check_texts() {
    lines_with '\b(TODO|FIXME|XXX|HACK)\b' -- ':!tools/dev/layout.sh' | forbid 'Nothing is left for later in a comment:'
    whitespace_errors | forbid 'White space is as .gitattributes says:'
    lines_with '/(home|root|Users)/[a-z]+/' -- velmora managed tools cmake dev '*.cmake' |
        forbid 'No path of one machine:'
}

# Compares with the empty tree and the empty file: every line counts, not only those that have changed.
whitespace_errors() {
    git diff --check "$(git hash-object -t tree /dev/null)" || true
    git ls-files --others --exclude-standard -z |
        xargs -0 --no-run-if-empty --max-args=1 git diff --check --no-index /dev/null || true
}

check_scripts() {
    local script
    for script in $(git grep --untracked -lI '^#!'); do
        [ -x "$script" ] || echo "$script"
    done | forbid 'A script has its run bit:'
}

check_includes
check_headers
check_using_directives
check_lengths
check_texts
check_scripts
[ "$failures" -eq 0 ]
