# ./dev check and ./dev format
# shellcheck shell=bash
readonly check_steps=(layout headers format lint address thread fuzz windows)

check() { # [step]...
    require "${build_packages[@]}" "${check_packages[@]}"
    local name
    [ $# -gt 0 ] || set -- "${check_steps[@]}"
    for name in "$@"; do
        case " ${check_steps[*]} " in
            *" $name "*) ;;
            *) fail "there is no step '$name'; there are: ${check_steps[*]}" 2 ;;
        esac
    done
    for name in "$@"; do
        "check_$name"
    done
    say "all checks passed: $*"
}

# Files that are in the repository or about to be, of the given endings.
sources() { # <pattern>...
    git ls-files --cached --others --exclude-standard -- "$@" | while IFS= read -r file; do
        [ ! -f "$file" ] || printf '%s\n' "$file"
    done
}

check_layout() {
    step "layout of the tree" check-layout tools/dev/layout.sh
    step "shell scripts" check-scripts check_scripts
}

# Each with the files that it brings in, and with all files that nobody brings in.
check_scripts() { git grep --untracked -lI '^#!/usr/bin/env bash' | xargs shellcheck --external-sources --check-sourced; }

check_headers() {
    build release VelmoraTessaport VelmoraLogging VelmoraIO
    step "headers compile alone" check-headers tools/dev/headers.sh build/release
}

check_format() { step "format" check-format format_all --dry-run --Werror; }

check_lint() {
    build release
    step "lint" check-lint lint_all
}

# What is for Windows alone is not in that build.
lint_all() {
    sources 'velmora/*.cpp' 'tools/*.cpp' 'examples/*.cpp' 'tests/*.cpp' ':!tests/package' | grep -Fxf <(built_sources) |
        xargs --max-procs=2 --max-args=2 clang-tidy -p build/release --quiet
}

built_sources() { sed -n "s|^ *\"file\": \"$PWD/\(.*\)\",*$|\1|p" build/release/compile_commands.json; }

check_address() {
    build asan-ubsan
    run_ctest asan-ubsan check-address
}

check_thread() {
    build tsan
    run_ctest tsan check-thread
}

check_windows() {
    require "${windows_packages[@]}"
    prepare_windows
    build windows VelmoraTessaport
    step "compiles for Windows without extensions" check-windows tools/dev/windows-clang.sh build/windows
}

check_fuzz() { build fuzz fuzz; }

format_sources() {
    require "${build_packages[@]}" "${check_packages[@]}"
    step "format" format format_all -i
}

format_all() { sources '*.h' '*.cpp' | xargs clang-format "$@"; }
