#!/usr/bin/env bash
# usage: windows-clang.sh BUILD_FOLDER
# Compiles every source of a Windows build tree with another compiler, which takes no extension of the language: a step
# towards Microsoft's.
set -euo pipefail
readonly build_folder=$1

# The C++ library stays that of mingw-w64, whose compiler says where it is.
library_options() {
    x86_64-w64-mingw32-g++-posix -E -v -x c++ /dev/null 2>&1 >/dev/null | sed -n 's/^ \(\/.*\/c++.*\)$/-isystem \1/p'
}

# One command a line, without those that compile resources. GoogleTest's macros need the exception.
commands() {
    local options
    options="--target=x86_64-w64-windows-gnu -fsyntax-only"
    options="$options $(library_options | tr '\n' ' ')"
    sed -n '/ -c [^ ]*\/googletest\//d; s/^ *"command": "\(.*g++-posix .*\)",$/\1/p' \
        "$build_folder/compile_commands.json" |
        sed 's/\\\(.\)/\1/g' |
        sed "s|^.*x86_64-w64-mingw32-g++-posix |clang++ $options |; s/ -fno-keep-inline-dllexport//; s/ -Wconversion//;
             s/ -o [^ ]*\.obj / /; s/\$/ -pedantic-errors -Wno-gnu-zero-variadic-macro-arguments/"
}

count=$(commands | wc -l)
[ "$count" -gt 0 ] || { echo "no source was found in $build_folder"; exit 1; }
commands | xargs --max-procs=2 -d '\n' --max-args=1 sh -c
echo "$count sources"
