# ./dev bench
# shellcheck shell=bash

bench() { # [name]...
    require "${build_packages[@]}" "${bench_packages[@]}"
    build bench bench/all
    local all name failed=()
    mapfile -t all < <(find build/bench/bench -maxdepth 1 -type f -executable -printf '%f\n' | sort)
    [ $# -gt 0 ] || set -- "${all[@]}"
    for name in "$@"; do
        case " ${all[*]} " in
            *" $name "*) ;;
            *) fail "there is no benchmark '$name'; there are: ${all[*]}" 2 ;;
        esac
    done
    for name in "$@"; do
        run_benchmark "$name" || failed+=("$name")
    done
    [ ${#failed[@]} -eq 0 ] || fail "failed or short of a goal: ${failed[*]}; what they said is in $log_folder/bench-*.txt"
}

run_benchmark() { # <name>
    say "$1"
    "build/bench/bench/$1" --benchmark_out="build/bench/$1.json" --benchmark_out_format=json \
        2>"$log_folder/bench-$1.txt" | tee "build/bench/$1.txt"
}
