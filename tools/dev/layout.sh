#!/usr/bin/env bash
# What the layout of the tree promises and no compiler checks. Prints every line that breaks a promise.
set -euo pipefail
# So that the last part of a pipe counts into this shell.
shopt -s lastpipe
readonly longest_source=400
readonly longest_test=600
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
    git grep --untracked -nE "$@" || true
}

includes_of() { # <folder expression> <where>...
    local folders=$1
    shift
    lines_with "#include <velmora/($folders)/" -- "$@"
}

check_includes() {
    includes_of 'logging|io' velmora/api velmora/native velmora/bridge velmora/platform |
        forbid 'The library does not use the logging and input/output libraries:'
    includes_of 'api|native|bridge' velmora/logging velmora/io |
        forbid 'The logging and input/output libraries do not use the library:'
    includes_of 'native|bridge' velmora/platform | forbid 'The platform layer uses no layer above it:'
    includes_of 'bridge/runtime' velmora/native ':!velmora/native/RuntimeOptions.cpp' ':!velmora/native/WorkspacePaths.cpp' |
        forbid 'Only the bridge and the options know the runtime:'
    lines_with '#include <(tests|tools|bench|fuzz|examples)/' -- velmora | forbid 'The library includes nothing outside it:'
}

check_headers() {
    local header
    for header in $(tracked '*.h'); do
        grep -q '^#pragma once$' "$header" || echo "$header"
    done | forbid 'A header has #pragma once:'
    lines_with '^using namespace' -- '*.h' | forbid 'A header brings in no namespace:'
}

check_lengths() {
    longer_than "$longest_source" 'velmora/*' 'managed/*' 'tools/*' 'cmake/*' '*CMakeLists.txt' dev |
        forbid "A source file has at most $longest_source lines:"
    longer_than "$longest_test" 'tests/*' 'bench/*' 'fuzz/*.cpp' |
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
    lines_with '[[:blank:]]$|'$'\t' -- '*.h' '*.cpp' '*.cs' '*.md' '*.sh' '*.cmake' '*CMakeLists.txt' '*.json' dev |
        forbid 'Lines have no tabs and no blanks at their end:'
    lines_with -I $'\r$' -- ':!*/corpus/*' | forbid 'Lines end with a line feed:'
    lines_with '/(home|root|Users)/[a-z]+/' -- velmora managed tools cmake dev '*.cmake' |
        forbid 'No path of one machine:'
}

check_scripts() {
    local script
    for script in dev .ci/run tools/dev/layout.sh tools/dev/headers.sh; do
        [ -x "$script" ] || echo "$script"
    done | forbid 'A script that is called has its run bit:'
}

check_includes
check_headers
check_lengths
check_texts
check_scripts
[ "$failures" -eq 0 ]
