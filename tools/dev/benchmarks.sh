# ./dev bench and ./dev bench-windows
# shellcheck shell=bash

bench() { # [name]...
    require "${build_packages[@]}" "${bench_packages[@]}"
    build bench bench/all
    run_benchmarks bench "$@"
}

bench_windows() { # [name]...
    prepare_windows
    require_debian_source benchmark build/debian-source/benchmark
    build bench-windows bench/all
    run_under_wine run_benchmarks bench-windows "$@"
}

run_benchmarks() { # <preset> [name]...
    local preset=$1 all name failed=()
    shift
    # What the build would make: a program that was dropped may still lie there.
    mapfile -t all < <(ninja -C "build/$preset" -t targets all |
        sed -nE 's|^bench/([A-Za-z0-9_]+_bench)(\.exe)?: .*|\1|p' | sort -u)
    [ $# -gt 0 ] || set -- "${all[@]}"
    for name in "$@"; do
        is_one_of "$name" "${all[@]}" || fail "there is no benchmark '$name'; there are: ${all[*]}" 2
    done
    for name in "$@"; do
        run_benchmark "$preset" "$name" || failed+=("$name")
    done
    [ "$preset $#" != "bench ${#all[@]}" ] || write_figures docs/performance.md "$@"
    [ ${#failed[@]} -eq 0 ] || fail "failed or missed a goal: ${failed[*]}; their messages are in $log_folder/$preset-*.txt"
}

run_benchmark() { # <preset> <name>
    local folder=build/$1 call=("build/$1/bench/$2")
    [ -e "${call[0]}" ] || call=(cmake/mingw/wine-run.sh "$windows_folder" "${call[0]}.exe")
    say "$2"
    "${call[@]}" --benchmark_out="$folder/$2.json" --benchmark_out_format=json \
        2>"$log_folder/$1-$2.txt" </dev/null | tee "$folder/$2.txt"
}

# Replaces the table of figures in a document by those of this run.
write_figures() { # <document> <name>...
    local document=$1 table
    shift
    table=$(figures_of "$@")
    awk -v table="$table" '
        /^<!-- figures -->$/ { print; print table; skipped = 1 }
        /^<!-- end of figures -->$/ { skipped = 0 }
        !skipped' "$document" >build/bench/document.md
    cp build/bench/document.md "$document"
}

# Every line with a goal that the benchmarks have printed: "met  0.83  (goal: at most 1.00)  what".
figures_of() { # <name>...
    local name
    printf 'Measured on %s, %s, %s processors, .NET %s, g++ %s.\n' "$(date -u +%Y-%m-%d)" "$(processor_model)" \
        "$(nproc)" "$(dotnet --version)" "$(c++ -dumpfullversion)"
    printf '\n| benchmark | what | measured | goal | |\n| --- | --- | --- | --- | --- |\n'
    for name in "$@"; do
        sed -nE "s/^(met|MISSED|shown) +([-0-9.]+) +\\(goal[^:]*: ([^)]*)\\) +(.*)/| ${name%_bench} | \\4 | \\2 | \\3 | \\1 |/p" \
            "build/bench/$name.txt"
    done
}

processor_model() { sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1; }
