# SPDX-License-Identifier: Apache-2.0
# Sourced after tools/packages.sh: fetch the packages that an emulated device is made of, and keep them by
# version.
# Nothing of them is installed on this machine; the image builder takes single files out of them.
#
# fetch_packages ARCH NAME...   prints the path of each package file, one a line
# kernel_package ARCH META      prints the name of the one kernel image that a meta-package stands for

cache=${XDG_CACHE_HOME:-${HOME:-/root}/.cache}/wivex

kernel_package() {
    apt-cache depends "$2:$1" | sed -n 's/^ *Depends: \(linux-image-[^:]*\).*/\1/p' | head -n 1
}

# Downloads what the cache lacks; apt's name of the file holds the version. A NAME may ask for one
# version: NAME=VERSION.
# All apt work is done in a folder of its own: there it names every file, also those we have,
# and a package in the cache is a whole one.
fetch_packages() (
    debian_arch=$1
    shift
    mkdir -p "$cache/packages"
    folder=$(mktemp -d "$cache/fetch.XXXXXX")
    trap 'rm -r "$folder"' EXIT
    cd "$folder"
    names=$(printf '%s\n' "$@" | sed "s/^[^=]*/&:$debian_arch/")
    packages_of_apt --print-uris $names >uris || exit
    files=$(awk '{ print $2 }' uris)
    missing=$(for file in $files; do
        [ -e "$cache/packages/$file" ] || echo "$names" | awk -v name="${file%%_*}:" 'index($0, name) == 1'
    done)
    if [ -n "$missing" ]; then
        echo "Fetching:" $missing >&2
        packages_of_apt $missing >&2 || exit
        mv ./*.deb "$cache/packages/"
    fi
    for file in $files; do echo "$cache/packages/$file"; done
)

# A second try after refreshing the index: it may be missing, or older than what is served.
packages_of_apt() {
    apt-get download -qq -o APT::Sandbox::User=root "$@" && return
    refresh_index
    apt-get download -qq -o APT::Sandbox::User=root "$@"
}
