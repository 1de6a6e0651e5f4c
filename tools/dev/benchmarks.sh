# ./dev bench
# shellcheck shell=bash

bench() { # [name]...
    require "${build_packages[@]}" "${bench_packages[@]}"
    build bench bench/all
    local program count=0
    for program in build/bench/bench/*; do
        if is_wanted "$(basename "$program")" "$@"; then
            run_benchmark "$program"
            count=$((count + 1))
        fi
    done
    [ "$count" -gt 0 ] || fail "no benchmark of that name; there are: $(ls build/bench/bench)" 2
}

is_wanted() { # <name> [wanted name]...
    local name=$1 wanted
    shift
    [ $# -gt 0 ] || return 0
    for wanted in "$@"; do
        [ "$wanted" != "$name" ] || return 0
    done
    return 1
}

run_benchmark() { # <program>
    local name
    name=$(basename "$1")
    say "$name"
    "$1" --benchmark_out="build/bench/$name.json" --benchmark_out_format=json 2>"$log_folder/bench-$name.txt" |
        tee "build/bench/$name.txt" ||
        fail "'$name' failed; what it said is in $log_folder/bench-$name.txt"
}
