# The steps that the commands consist of. Each prints its name; its output goes to a file in build/log.
# shellcheck shell=bash
readonly log_folder=build/log

fail() { # <message> [exit code]
    printf 'dev: %s\n' "$1" >&2
    exit "${2:-1}"
}

say() { printf '== %s\n' "$1"; }

# Prints the end of the log if the command fails. The command runs without errexit: a function given here returns its own
# failures.
step() { # <title> <log name> <command>...
    local title=$1 log=$log_folder/$2.txt
    shift 2
    say "$title"
    mkdir -p "$log_folder"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 60 "$log"
        fail "'$title' failed; the complete output is in $log"
    fi
}

configure() { # <preset> [cmake option]...
    local preset=$1
    shift
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    step "configure $preset" "configure-$preset" cmake --preset "$preset" "$@"
}

build() { # <preset> [target]...
    local preset=$1
    shift
    if [ ! -e "build/$preset/build.ninja" ] || [ CMakePresets.json -nt "build/$preset/build.ninja" ] ||
        [ -e "build/$preset/demo-only" ]; then
        configure "$preset"
        rm -f "build/$preset/demo-only"
    fi
    step "build $preset" "build-$preset" cmake --build --preset "$preset" ${1:+--target "$@"}
}

# A test that is skipped or cannot run counts as failed.
run_ctest() { # <preset> <log name> [ctest option]...
    local preset=$1 log=$log_folder/$2
    shift 2
    say "test $preset"
    mkdir -p "$log_folder"
    ctest --preset "$preset" --progress --output-log "$log.txt" --output-junit "$PWD/$log.xml" "$@" </dev/null ||
        fail "tests failed; their output is in $log.txt"
    [ "$(grep -cE '^\s*(disabled|skipped)="0"$' "$log.xml")" -eq 2 ] || fail "tests were skipped; $log.txt has their names"
}

is_one_of() { # <word> <word>...
    local word=$1
    shift
    case " $* " in
        *" $word "*) ;;
        *) return 1 ;;
    esac
}
