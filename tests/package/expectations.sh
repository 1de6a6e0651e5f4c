# What the checks of packages expect of commands.
# shellcheck shell=bash

fail() { # <message>
    printf 'FAILED: %s\n' "$1" >&2
    exit 1
}

expect_output() { # <what must be in it> <command>...
    local wanted=$1 output
    shift
    output=$("$@" 2>&1) || fail "'$*' ended with $?: $output"
    [[ $output == *"$wanted"* ]] || fail "'$*' did not print '$wanted', but: $output"
}

expect_failure() { # <what must be in its messages> <command>...
    local wanted=$1 output status=0
    shift
    output=$("$@" 2>&1) || status=$?
    [ "$status" -ne 0 ] || fail "'$*' did not fail, but printed: $output"
    [ "$status" -lt 126 ] || fail "'$*' ended with $status: $output"
    [[ $output == *"$wanted"* ]] || fail "'$*' did not print '$wanted', but: $output"
}
