#!/usr/bin/env bash
# Tries the page maker of the site on a document with links of every kind.
#   links.sh <root of the repository> <folder to work in>
set -euo pipefail
source=$1 work=$2

fail() { # <message>
    printf 'FAILED: %s\n' "$1" >&2
    exit 1
}

make_page() { # <line of the document>, prints the page and the messages
    printf '# Title\n\n%s\n' "$1" >"$work/docs/page.md"
    (cd "$work" && awk -v file=docs/page.md -v table=table -f "$source/cmake/site/page.awk" docs/page.md 2>&1)
}

expect_page() { # <line of the document> <line of the page>
    local page
    page=$(make_page "$1") || fail "'$1' is refused: $page"
    [ "$(tail -n 1 <<<"$page")" = "$2" ] || fail "'$1' becomes: $page"
}

expect_refusal() { # <line of the document> <part of the message>
    local page
    ! page=$(make_page "$1") || fail "'$1' is accepted: $page"
    [[ $page == *"docs/page.md:3: "*"$2"* ]] || fail "'$1' is refused with: $page"
}

rm -rf "$work"
mkdir -p "$work/docs/images" "$work/velmora/api" "$work/examples"
# shellcheck disable=SC2016 # The backticks are Markdown.
printf '# Other\n\n## What .NET does (Linux)\n\n```sh\n# no heading\n```\n' >"$work/docs/other.md"
touch "$work/docs/images/window.png" "$work/velmora/api/Item.h" "$work/velmora/api/Interop.h" "$work/README.md"
printf '%s\n' 'docs/page.md page' 'docs/other.md other' 'README.md overview' \
    'velmora/api/Interop.h velmora/api/Interop.h' >"$work/table"

# shellcheck disable=SC2016 # The backticks are Markdown.
{
    expect_page 'See [it](other.md).' 'See [it](@ref other).'
    expect_page '[a](../README.md) and [b](other.md#what-net-does-linux)' \
        '[a](@ref overview) and [b](@ref other-what-net-does-linux)'
    expect_page '[it](#title)' '[it](@ref page-title)'
    expect_page '[it](../velmora/api/Interop.h)' '[it](@ref velmora/api/Interop.h)'
    expect_page 'Read [the examples](../examples) first.' 'Read the examples first.'
    expect_page '[it](https://example.org/a#b)' '[it](https://example.org/a#b)'
    expect_page $'See [this and\n  that](other.md), too.' '[this and that](@ref other), too.'
    expect_page $'Call `c++ $(pkg\n--libs)`; see [it](other.md).' '`c++ $(pkg --libs)`; see [it](@ref other).'
    expect_page $'`c++\n--libs` does' '`c++ --libs` does'
    expect_page '- [ ' '[ '
    expect_page '![A window](images/window.png)' '![A window](images/window.png)'
    expect_page '`[this](QvNativeTessaportAPI& tessaport)` is code' '`[this](QvNativeTessaportAPI& tessaport)` is code'
    expect_page 'a@b and `<>:"|`' 'a\@b and <code>&lt;&gt;:&quot;|</code>'
    expect_page "\`no 'x'\` and \`a\\b\`" '<code>no &apos;x&apos;</code> and `a\b`'
    expect_page '`"D:\x*"`' '<code>&quot;D:\\x\*&quot;</code>'

    expect_refusal '[it](missing.md)' 'there is no docs/missing.md'
    expect_refusal '![A window](images/missing.png)' 'there is no docs/images/missing.png'
    expect_refusal '[it](other.md#what-net-does)' 'docs/other.md has no heading what-net-does'
    expect_refusal '[it](other.md#no-heading)' 'docs/other.md has no heading no-heading'
    expect_refusal '[it](../velmora/api/Item.h)' 'only public headers with @file'
}
