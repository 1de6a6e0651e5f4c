# The versions of .NET that the tests run on.
# shellcheck shell=bash
declare -rA dotnet_versions=([8]=8.0.31 [10]=10.0.12)

# From here on programs that look for .NET find this version of it, and no other.
use_dotnet() { # <major version>
    local version=${dotnet_versions[${1:-none}]:-}
    [ -n "$version" ] || fail "there is no .NET '${1:-}' to test with; there are: ${!dotnet_versions[*]}" 2
    prepare_dotnet linux-x64 "$version" "build/dotnet-$1"
    export DOTNET_ROOT=$PWD/build/dotnet-$1
}

prepare_dotnet() { # <platform> <version> <folder>
    step ".NET $2 for $1" "dotnet-$1-$2" tools/dev/dotnet-root.sh "$1" "$2" "$3"
}
