#!/bin/bash
# Runs in a fresh chroot: installs the packages, uses them as a user does, removes them, and tries the archives. Its folder has
# what ./dev package has copied: the packages, .NET, the example host, the consumer project and files of this folder.
set -euo pipefail

# shellcheck source=tests/package/expectations.sh
. ./expectations.sh

now() { date +%s%N; }

milliseconds_since() { echo $((($(now) - $1) / 1000000)); } # <time>

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
    cmake -S test-kit -B test-kit-build "-DVELMORA_VERSION=$(pkg-config --modversion velmora-tessaport)" \
        "-DSOURCES=$PWD/consumer/testkit/recipes.cpp"
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

unpack_to() { # <folder> <archive>
    mkdir -p "$1"
    tar --extract --file "$2" --directory "$1" --strip-components=1
}

check_archive() {
    local folder='/opt/Ablage für Velmora'
    unpack_to "$folder" packages/*-linux-x86_64.tar.gz
    "$folder/bin/tessaport" doctor || fail "doctor of the archive found something"
    expect_output "$folder/lib/libVelmoraTessaport.so" "$folder/bin/tessaport" doctor
    rm -rf "$folder"
}

# Before there is any other .NET.
check_complete_archive() {
    local folder='/opt/Ablage mit .NET'
    unpack_to "$folder" packages/*-complete.tar.gz
    "$folder/bin/tessaport" demo >/dev/null
    "$folder/bin/tessaport" doctor || fail "doctor of the complete archive found something"
    expect_output "$folder/lib/velmora/dotnet" "$folder/bin/tessaport" doctor
    expect_output 'Harbour Project' "$folder/bin/tessaport" drives
    [ -s "$folder/lib/velmora/dotnet/LICENSE.TXT" ] || fail "the license of .NET is not in the complete archive"
    rm -rf "$folder" /root/.local
}

list_files >before.txt
check_complete_archive
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
