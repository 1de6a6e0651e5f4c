# ./dev docs
# shellcheck shell=bash
readonly site_folder=$PWD/build/docs/site

docs() {
    require "${build_packages[@]}" "${site_packages[@]}" linkchecker
    build docs velmora_site
    step "links of the site" docs-links check_links
    say "in ${site_folder#"$PWD"/}/html/index.html"
}

# In a copy that every user may read, because linkchecker gives up the rights of root.
check_links() {
    local copy status=0
    copy=$(mktemp -d) && chmod 755 "$copy" && cp -r --no-preserve=mode "$site_folder/html" "$copy" || return 1
    linkchecker --config cmake/site/links.ini --no-status "$copy/html/index.html" || status=$?
    rm -rf "$copy"
    return "$status"
}

# Opens the pages in a browser, narrow and wide, light and dark. The pictures are for people to look at.
check_site() {
    docs
    require "${browser_packages[@]}"
    step "site in a browser" check-site tests/site/look.py "$site_folder/html" "$site_folder/pictures"
    say "pictures in ${site_folder#"$PWD"/}/pictures"
}
