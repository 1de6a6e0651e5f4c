#!/bin/bash
# Runs in a fresh chroot: installs the packages, uses them as a user does, removes them, and tries the archive. Its folder has
# what ./dev package has copied: the packages, .NET, the example host, the consumer project and files of this folder.
set -euo pipefail

fail() { # <message>
    printf 'FAILED: %s\n' "$1" >&2
    exit 1
}

now() { date +%s%N; }

milliseconds_since() { echo $((($(now) - $1) / 1000000)); } # <time>

expect_output() { # <what must be in it> <command>...
    local wanted=$1 output
    shift
    output=$("$@" 2>&1) || fail "'$*' ended with $?: $output"
    [[ $output == *"$wanted"* ]] || fail "'$*' did not print '$wanted', but: $output"
}

expect_failure() { # <what must be in its messages> <command>...
    local wanted=$1 output status=0
    shift
    output=$("$@" 2>&1) || status=$?
    [ "$status" -ne 0 ] || fail "'$*' did not fail, but printed: $output"
    [ "$status" -lt 126 ] || fail "'$*' ended with $status: $output"
    [[ $output == *"$wanted"* ]] || fail "'$*' did not print '$wanted', but: $output"
}

# Every file but those in which apt and dpkg keep their own records and caches.
list_files() {
    find / -xdev \( -path /proc -o -path /check -o -path /var/cache -o -path /var/lib/apt -o -path /var/lib/dpkg \
        -o -path /var/log -o -path /tmp \) -prune -o -print | sort
}

install_packages() {
    # Everything that they depend on is installed already; there is no network.
    apt-get -o Dpkg::Use-Pty=false install --yes ./packages/*.deb
}

check_without_dotnet() {
    expect_failure 'install the .NET runtime 8 or newer' tessaport doctor
    expect_failure 'Install the .NET runtime 8.0 or newer' tessaport drives
}

check_tool() {
    tessaport demo >/dev/null
    tessaport doctor || fail "doctor found something"
    expect_output 'Harbour Project' tessaport drives
}

check_hosts() {
    local service=/usr/share/velmora/local-service
    # shellcheck disable=SC2046 # The flags are words.
    c++ -std=c++17 host/main.cpp $(pkg-config --cflags --libs velmora-tessaport) -o host-of-pkg-config
    expect_output 'Harbour Project:' ./host-of-pkg-config "$service"
    cmake -S host -B host-of-cmake
    cmake --build host-of-cmake
    expect_output 'Harbour Project:' "$(find host-of-cmake -name velmora_host -type f)" "$service"
    cmake -S test-kit -B test-kit-build "-DSOURCES=$PWD/consumer/testkit/recipes.cpp"
    cmake --build test-kit-build
    test-kit-build/recipes
}

check_manual() {
    expect_output 'work with the drives of Tessaport' man --pager=cat tessaport
    expect_output 'Also list what is in the folders' man --pager=cat tessaport-ls
}

check_documents() {
    expect_output 'getFolderContents' cat /usr/share/doc/velmora-tessaport-doc/html/hosting.html
}

# Completes as a key press does: bash loads the script because of the name of the command.
check_completion() {
    # shellcheck disable=SC2016 # The inner shell expands it.
    expect_output 'drives' bash -c '
        . /usr/share/bash-completion/bash_completion
        _completion_loader tessaport
        COMP_WORDS=(tessaport driv) COMP_CWORD=1
        _tessaport tessaport driv tessaport
        printf "%s\n" "${COMPREPLY[@]}"'
}

purge_packages() {
    local names
    mapfile -t names < <(for file in packages/*.deb; do dpkg-deb --field "$file" Package; done)
    apt-get -o Dpkg::Use-Pty=false purge --yes "${names[@]}"
}

check_archive() {
    local folder='/opt/Ablage für Velmora'
    mkdir -p "$folder"
    tar --extract --file packages/*.tar.gz --directory "$folder" --strip-components=1
    "$folder/bin/tessaport" doctor || fail "doctor of the archive found something"
    expect_output "$folder/lib/libVelmoraTessaport.so" "$folder/bin/tessaport" doctor
    rm -rf "$folder"
}

list_files >before.txt
begin=$(now)
install_packages
check_without_dotnet
cp -r dotnet-8 /usr/share/dotnet
check_tool
printf 'from the packages to a listed drive: %s ms\n' "$(milliseconds_since "$begin")"
check_hosts
check_manual
check_documents
check_completion
purge_packages
check_archive
rm -rf /root/.local /usr/share/dotnet
list_files >after.txt
diff before.txt after.txt || fail "the packages left something"
