#!/bin/sh
# Makes the man pages of the tool, one for it and one for each of its commands, and its completions for shells.
set -eu
tool=$1     # The tool.
library=$2  # The folder of its library.
help2man=$3 # The program.
output=$4   # The folder to make, which has the file "complete" in the end.
includes=$(realpath "$(dirname "$0")")/manual.inc

export LD_LIBRARY_PATH="$library" LC_ALL=C.UTF-8

# The help on the command in the order of a man page: the examples last. A line that begins with $ keeps its form.
make_help() { # <command, or nothing>
    "$tool" ${1:+"$1"} --help | sed "s|^Usage: .*tessaport |Usage: tessaport |" | awk '
        BEGIN { RS = ""; ORS = "\n\n" }
        /^Examples:/ { examples = $0; next }
        description == "" { description = $0; next }
        { print }
        /^Usage:/ { sub(/\.?$/, ".", description); print description }
        END { gsub(/\n  /, "\n  $ ", examples); print examples }' >"$output/help.txt"
}

page() { # <name> <summary> <help2man option>...
    name=$1
    shift
    summary=$1
    shift
    # From its folder, because help2man cannot run a program whose path has a blank.
    (cd "$output" && "$help2man" --no-info --section=1 --source="tessaport $version" --manual='User Commands' \
        --name="$summary" --version-string="$version" "$@" ./print-help) >"$output/page.txt"
    sed "s/^print-help \\\\- /$name \\\\- /; s/PRINT-HELP/$(echo "$name" | tr '[:lower:]' '[:upper:]')/g" \
        "$output/page.txt" >"$output/man/$name.1"
    gzip -9n "$output/man/$name.1"
}

rm -rf "$output"
mkdir -p "$output/man"
# help2man calls a program for the text.
printf '#!/bin/sh\ncat "%s/help.txt"\n' "$output" >"$output/print-help"
chmod +x "$output/print-help"

version=$("$tool" --version)
version=${version#tessaport }
make_help ''
page tessaport 'work with the drives of Tessaport' --include="$includes"
"$tool" __complete -- '' | grep -v '^-' | while IFS="$(printf '\t')" read -r command summary; do
    make_help "$command"
    page "tessaport-$command" "$summary"
done
for shell in bash zsh fish; do
    "$tool" completion "$shell" >"$output/$shell"
done
touch "$output/complete"
