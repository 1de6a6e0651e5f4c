# ./dev check and ./dev format
# shellcheck shell=bash
readonly check_steps=(layout format headers lint libcxx address thread fuzz windows model soak calls abi site)
# These run only if they are named: they take long.
readonly rare_check_steps=(reproducible)
fuzz_seconds=5 # For each fuzzer.
model_rounds=1000
race_seconds=20
damaged_files=1000
power_commands=100
killed_commands=500
soak_requests=1000000
failing_calls_step=50 # Of the pairs of a call and an error.

check() { # [--long] [step]...
    local name
    if [ "${1:-}" = --long ]; then
        fuzz_seconds=60 model_rounds=10000 race_seconds=60 damaged_files=10000 power_commands=1000 killed_commands=10000
        soak_requests=10000000 failing_calls_step=8
        shift
    fi
    if [ "${1:-}" = --record-abi ]; then
        record_abi
        return
    fi
    [ $# -gt 0 ] || set -- "${check_steps[@]}"
    for name in "$@"; do
        is_one_of "$name" "${check_steps[@]}" "${rare_check_steps[@]}" ||
            fail "there is no step '$name'; there are: ${check_steps[*]} ${rare_check_steps[*]}" 2
    done
    require "${build_packages[@]}" "${check_packages[@]}"
    for name in "$@"; do
        "check_$name"
    done
    say "all checks passed: $*"
}

check_layout() {
    step "layout of the tree" check-layout tools/dev/layout.sh
    step "shell scripts" check-scripts check_scripts
}

# Checks each script with the files that it sources, and with all files that no script sources.
check_scripts() { git grep --untracked -lIE '^#!.*sh$' | xargs shellcheck --external-sources --check-sourced; }

check_format() {
    step "format of the C++ sources" check-format-cpp format_cpp --dry-run --Werror
    step "format of the C# sources" check-format-cs format_cs --verify-no-changes
}

check_headers() {
    require "$(lint_package)"
    build lint all_verify_interface_header_sets
}

check_lint() {
    require "$(lint_package)"
    build lint compile
}

# Another standard library than that of the compiler of the tests.
check_libcxx() { build libcxx; }

check_address() {
    build asan-ubsan
    run_ctest asan-ubsan check-address
}

check_thread() {
    build tsan
    run_ctest tsan check-thread
}

check_fuzz() {
    configure fuzz "-DVELMORA_FUZZ_SECONDS=$fuzz_seconds"
    build fuzz fuzz
}

# Another compiler, which takes no extension of the language.
check_windows() {
    require "${windows_packages[@]}"
    build windows-clang
}

# A user's and the service's actions at random, checked against docs/reliability.md.
check_model() {
    local program=build/release/managed/tests/model/LocalTessaport.Model
    build release velmora_local_service_model velmora_recorded_changes tessaport
    step "$model_rounds rounds of the model of the sync" check-model "$program" rounds "$model_rounds"
    step "$race_seconds seconds of races" check-race "$program" race "$race_seconds"
    step "$damaged_files damaged files of the home" check-damage "$program" damage "$damaged_files"
    step "the power fails during $power_commands commands" check-power with_recorded_changes "$program" power "$power_commands"
    step "$killed_commands commands are killed" check-kills with_recorded_changes "$program" kills "$killed_commands"
}

with_recorded_changes() { # <command>...
    env "VELMORA_TESSAPORT_TOOL=$PWD/build/release/bin/tessaport" \
        "VELMORA_RECORDED_CHANGES_LIBRARY=$PWD/build/release/lib/libvelmora_recorded_changes.so" "$@"
}

# Each call of the system that a command makes on the files of a user fails.
check_calls() {
    build release cli_failing_calls_tests
    step "failing calls of the system" check-calls \
        env "VELMORA_FAILING_CALLS_STEP=$failing_calls_step" build/release/tests/cli_failing_calls_tests
}

# Requests of all kinds in one process, which must not grow.
check_soak() {
    build release velmora_soak
    step "$soak_requests requests in one process" check-soak build/release/tests/velmora_soak "$soak_requests"
}

# The library and what crosses the C boundary, compared with what the last release recorded.
check_abi() {
    build abi
    build abi velmora_check_abi
}

# For a release: what later versions are compared with.
record_abi() {
    require "${build_packages[@]}" "${check_packages[@]}"
    build abi
    build abi velmora_record_abi
}

# Faults in the sources, of which the tests should notice all.
mutate() { # [--count NUMBER] [--seed SEED] [folder]...
    require "${build_packages[@]}" "${test_packages[@]}"
    configure release
    step "faults in the sources" mutations tools/dev/mutate.py . "$@"
    tail -n 1 "$log_folder/mutations.txt"
}

format_sources() {
    require "${build_packages[@]}" "${check_packages[@]}"
    step "format the C++ sources" format-cpp format_cpp -i
    step "format the C# sources" format-cs format_cs
}

# Sources of the given patterns that are in the repository or about to be.
sources() { # <pattern>...
    git ls-files --cached --others --exclude-standard -- "$@" | while IFS= read -r file; do
        [ ! -f "$file" ] || printf '%s\n' "$file"
    done
}

format_cpp() { sources '*.h' '*.cpp' | xargs clang-format "$@"; }

format_cs() { # [dotnet format option]...
    local folder
    for folder in managed tests/managed bench; do
        dotnet format whitespace "$folder" --folder --exclude "$folder/**/obj" "$@" || return 1
    done
}
