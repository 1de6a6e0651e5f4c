# The steps that the commands are made of. Each says its name; what it prints goes to a file under build/log.
# shellcheck shell=bash
readonly log_folder=build/log

fail() { # <message> [exit code]
    printf 'dev: %s\n' "$1" >&2
    exit "${2:-1}"
}

say() { printf '== %s\n' "$1"; }

# Of a failure the end of the file is shown. The command runs without errexit: a function given here must return its
# own failures.
step() { # <title> <log name> <command>...
    local title=$1 log=$log_folder/$2.txt
    shift 2
    say "$title"
    mkdir -p "$log_folder"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 60 "$log"
        fail "'$title' failed; all that it printed is in $log"
    fi
}

build() { # <preset> [target]...
    local preset=$1
    shift
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    if [ ! -e "build/$preset/build.ninja" ] || [ CMakePresets.json -nt "build/$preset/build.ninja" ]; then
        step "configure $preset" "configure-$preset" cmake --preset "$preset"
    fi
    step "build $preset" "build-$preset" cmake --build --preset "$preset" ${1:+--target "$@"}
}

# Shows what ctest says in closing, and of each test that failed all that it printed.
run_ctest() { # <preset> <log name> [ctest option]...
    local preset=$1 log=$log_folder/$2.txt status=0
    shift 2
    say "test $preset"
    mkdir -p "$log_folder"
    ctest --preset "$preset" "$@" >"$log" 2>&1 </dev/null || status=$?
    show_failed_tests "$log"
    sed -n '/tests passed, .* failed out of/,$p; /^No tests were found/p' "$log"
    [ "$status" -eq 0 ] || fail "tests failed; all that they printed is in $log"
    # A test that cannot run is one that nobody ran.
    ! grep -q '^The following tests did not run:' "$log" || fail "tests were skipped; $log has their names"
}

show_failed_tests() { # <log>
    awk '/^ *[0-9]+\/[0-9]+ Test +#[0-9]+:/ { shown = /\*\*\*/ && !/\*\*\*Skipped/ }
         /^ +Start +[0-9]+:/ || /tests passed, .* failed out of/ { shown = 0 }
         shown' "$1"
}
