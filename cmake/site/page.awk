# Prints a Markdown file as a page of the site: headings get the anchors that code hosts give them, and links lead to pages of
# the site. A link to a file of the
# tree that is not in it becomes its text. Fails if a link leads nowhere.
#   awk -v file=docs/hosting.md -v table=pages.txt -f page.awk docs/hosting.md
# The table has a line for each file that is in the site: the file, and the name by which Doxygen knows it. Line numbers stay as
# they are.

BEGIN {
    while ((getline line < table) > 0) {
        split(line, words, " ")
        page[words[1]] = words[2]
    }
    folder = file
    if (!sub(/\/[^\/]*$/, "", folder))
        folder = ""
}

# Doxygen wants the text of a link on one line, and so do we with code: what begins at the end of a line goes to the next one.
kept != "" {
    sub(/^ */, "")
    $0 = kept " " $0
    kept = ""
}

!in_code && !/^ *```/ && begins_at_its_end($0) {
    kept = substr($0, RSTART)
    $0 = substr($0, 1, RSTART - 1)
    if (/^ *$/)
        next
}

/^ *```/ { in_code = !in_code }

in_code || /^ *```/ { print; next }

/^#/ {
    match($0, /^#+ /)
    level = RLENGTH - 1
    # The front page has the name of the project, as the README has.
    title = page[file] == "overview" && level == 1 ? "Overview" : substr($0, RLENGTH + 1)
    print substr("######", 1, level) " " escaped(title) " {#" (level > 1 ? page[file] "-" anchor_of(title) : page[file] == "index" ? "mainpage" : page[file]) "}"
    next
}

# The table of the front page makes the table of contents.
{ is_content = page[file] == "index" && /^\|/ }

{ print with_links($0) }

END {
    if (kept != "")
        print kept
    exit failed
}

# The anchor of a heading: lower case, hyphens for spaces, and nothing else but letters, digits and underlines.
function anchor_of(title) {
    title = tolower(title)
    gsub(/[^a-z0-9_ -]/, "", title)
    gsub(/ /, "-", title)
    return title
}

# Whether a link or code begins in a line and does not end there; then RSTART is where.
function begins_at_its_end(line) {
    return gsub(/`/, "`", line) % 2 ? match(line, /`[^`]*$/) : match(line, /\[[^]`]*$/)
}

# Code between backticks stays as it is.
function with_links(line,    parts, count, i, result) {
    count = split(line, parts, "`")
    result = ""
    for (i = 1; i <= count; ++i)
        result = i % 2 == 1 ? result resolved(escaped(parts[i])) : result code(parts[i])
    return result
}

# Doxygen 1.9 does not find the end of code with quotation marks.
function code(text) {
    if (text !~ /["']/)
        return "`" text "`"
    gsub(/[\\@*]/, "\\\\&", text)
    gsub(/&/, "\\&amp;", text)
    gsub(/</, "\\&lt;", text)
    gsub(/>/, "\\&gt;", text)
    gsub(/"/, "\\&quot;", text)
    gsub(/'/, "\\&apos;", text)
    return "<code>" text "</code>"
}

# What would be a command of Doxygen.
function escaped(text) {
    gsub(/@/, "\\@", text)
    return text
}

function resolved(text,    result, before, target) {
    result = ""
    while (match(text, /\]\([^)]*\)/)) {
        before = result substr(text, 1, RSTART - 1)
        target = substr(text, RSTART + 2, RLENGTH - 3)
        text = substr(text, RSTART + RLENGTH)
        result = linked(before, target)
    }
    return result text
}

# The text before a link's target, up to the text of the link, with what links it.
function linked(before, target,    path, anchor) {
    path = target
    anchor = ""
    if (match(target, /#/)) {
        path = substr(target, 1, RSTART - 1)
        anchor = substr(target, RSTART + 1)
    }
    path = path == "" ? file : normalized((folder == "" ? "" : folder "/") path)
    if (target ~ /^https?:/)
        return before "](" target ")"
    if (!exists(path))
        complain(target, "there is no " path)
    else if (anchor != "" && !(path in page && has_anchor(path, anchor)))
        complain(target, path " has no heading " anchor)
    else if (before ~ /!\[[^\]]*$/)
        return before "](" target ")"
    else if (is_content && path in page && match(before, /\[[^\[]*$/))
        return substr(before, 1, RSTART - 1) "@subpage " page[path] " \"" substr(before, RSTART + 1) "\""
    else if (path in page)
        return before "](@ref " page[path] (anchor == "" ? "" : "-" anchor) ")"
    else if (path ~ /^velmora\/.*\.h$/)
        complain(target, "the site has only public headers with @file")
    else if (!sub(/\[[^\[]*$/, "\001&", before))
        complain(target, "its text must not have code in it, because it is not in the site")
    sub(/\001\[/, "", before)
    return before
}

function normalized(path) {
    gsub(/\/\.\//, "/", path)
    while (sub(/[^\/.]+\/\.\.\//, "", path)) { }
    return path
}

function exists(path) { return system("test -e '" path "'") == 0 }

function has_anchor(path, anchor,    line, fenced, found) {
    found = 0
    while ((getline line < path) > 0) {
        if (line ~ /^ *```/)
            fenced = !fenced
        else if (!fenced && line ~ /^#+ / && anchor_of(substr(line, index(line, " ") + 1)) == anchor)
            found = 1
    }
    close(path)
    return found
}

function complain(target, reason) {
    printf "%s:%d: the link to %s leads nowhere: %s\n", file, FNR, target, reason > "/dev/stderr"
    failed = 1
}
