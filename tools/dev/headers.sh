#!/usr/bin/env bash
# Compiles every header alone: public ones from an install, where nothing but public headers can be found, the others in
# the tree. Those whose names end with Windows need that system's.
set -euo pipefail
build_folder=$1
include_folder=$build_folder/check/include
nethost_folder=$(sed -n 's/^NETHOST_DIR:[A-Z]*=//p' "$build_folder/CMakeCache.txt")
readonly warnings=(-Wall -Wextra -Wpedantic -Wconversion -Werror)

compile_alone() { # <header> <include option>...
    local header=$1
    shift
    echo "$header"
    printf '#include <%s>\n#include <%s>\n' "$header" "$header" |
        c++ -std=c++17 "${warnings[@]}" -fsyntax-only "$@" -x c++ -
}

failures=0
rm -rf "$build_folder/check"
cmake --install "$build_folder" --prefix "$build_folder/check" --component Development >/dev/null
public=$(cd "$include_folder" && find velmora -name '*.h' | sort)
[ -n "$public" ] || { echo "no public header was installed"; exit 1; }
for header in $public; do
    compile_alone "$header" -I "$include_folder" || failures=$((failures + 1))
done
for header in $(git ls-files --cached --others --exclude-standard -- 'velmora/*.h' 'tools/*.h' 'tests/*.h' 'bench/*.h' \
    ':!*Windows.h'); do
    grep -qxF "$header" <<<"$public" || compile_alone "$header" -I . -I "$nethost_folder" || failures=$((failures + 1))
done
[ "$failures" -eq 0 ] || { echo "$failures headers do not compile alone"; exit 1; }
