#!/bin/bash
# Tries compare.sh on small libraries: one of the records, one of what crosses the C boundary.
set -euo pipefail
compiler=$1 # The C++ compiler.
sources=$2  # The repository.
work=$3     # A folder, emptied first.
abi=$sources/tests/package/abi

fail() { # <message>
    printf 'FAILED: %s\n' "$1" >&2
    exit 1
}

make_library() { # <name of the source> <folder of the headers> <library>
    "$compiler" -std=c++17 -g -fPIC -shared "-I$2" "$abi/$1.cpp" -o "$3"
}

# Records the interface of the library as it is, and builds the library again with a line of a header replaced.
change() { # <name of the source> <header> <expression of sed>
    rm -rf "$work/changed"
    mkdir -p "$work/changed"
    cp -r "$sources/velmora" "$work/changed/"
    sed -i "$3" "$work/changed/velmora/$2"
    ! cmp -s "$sources/velmora/$2" "$work/changed/velmora/$2" || fail "'$3' changes nothing in $2"
    make_library "$1" "$sources" "$work/$1.so"
    "$abi/record.sh" "$work/$1.so" "$work/$1.abi" "${headers[@]}"
    make_library "$1" "$work/changed" "$work/$1-changed.so"
}

expect_same() { # <name of the source>
    "$abi/compare.sh" "$work/$1.so" "$work/$1.abi" "${headers[@]}" || fail "an unchanged interface is refused"
}

expect_difference() { # <name of the source> <what must be in the report>...
    local report name=$1 status=0 wanted
    shift
    report=$("$abi/compare.sh" "$work/$name-changed.so" "$work/$name.abi" "${headers[@]}" 2>&1) || status=$?
    [ "$status" -eq 1 ] || fail "the exit code is $status: $report"
    for wanted in "$@" 'and record the new interface'; do
        [[ $report == *"$wanted"* ]] || fail "the report lacks '$wanted': $report"
    done
}

mapfile -t headers < <(find "$sources/velmora" -name '*.h')
rm -rf "$work"
case $4 in
    added-field)
        change records api/Item.h 's/^    bool isFolder = false;/    int rating = 0;\n&/'
        expect_same records
        expect_difference records 'Item'"' changed" "'int rating', at offset 320 (in bits)" "'bool isFolder' offset changed"
        ;;
    removed-name)
        change records api/Records.h 's,^#pragma once$,&\n#define takeDrive takeAnotherDrive,'
        expect_difference records "1 Removed" 'takeDrive('
        ;;
    boundary)
        change boundary bridge/boundary/TessaportEntryPoints.h 's/^    std::uint64_t handlesTaken;/    std::uint32_t handlesTaken;/'
        expect_same boundary
        expect_difference boundary 'VelmoraReply'"' changed" 'handlesTaken' "type size changed from 64 to 32"
        ;;
    *) fail "there is no test '$4'" ;;
esac
