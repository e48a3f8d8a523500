# SPDX-License-Identifier: Apache-2.0
# Sourced: build the drivers of the chips, device/kernel, for exactly the kernel of a device's image.
# build_drivers ARCH  leaves the modules at out/ARCH/drivers. Needs an image that is built, packages.sh
# and use_architecture. The kernel's headers are unpacked in the cache, not installed.

build_drivers() (
    use_architecture "$1"
    need_packages make "$(echo "$compiler_package" | sed 's/^g++/gcc/')"
    headers=$(kernel_headers "$(cat "out/$arch/kernel-package")")
    folder=$PWD/out/$arch/drivers
    mkdir -p "$folder"
    cp -u device/kernel/* "$folder/"
    prefix=
    [ "$crossing" = no ] || prefix=$triplet-
    make -s -C "$headers" M="$folder" "CROSS_COMPILE=$prefix" modules >"$folder/build.log" 2>&1 || {
        cat "$folder/build.log" >&2
        exit 1
    }
)

# kernel_headers FILE  the folder of the headers that go with the package file of a kernel's image.
kernel_headers() {
    version=$(basename "$1" | cut -d _ -f 2 | sed 's/%3a/:/')
    release=$(basename "$1" | sed 's/^linux-image-\([^_]*\)_.*/\1/')
    headers=$cache/headers/$debian_arch-$release-$version
    if [ ! -e "$headers" ]; then
        rm -rf "$headers.new"
        mkdir -p "$headers.new"
        unpack_headers "$headers.new"
        sed -i "s|include /usr/src|include $headers/usr/src|" \
            "$headers.new/usr/src/linux-headers-$release/Makefile"
        touch "$headers.new" # the packages left their own date
        mv "$headers.new" "$headers"
        find "$cache/headers" -mindepth 1 -maxdepth 1 -mtime +30 -exec rm -r {} +
    fi
    echo "$headers/usr/src/linux-headers-$release"
}

# Three packages have each other's places by links; the programs in the last run on this machine.
unpack_headers() {
    fetch_packages "$debian_arch" "linux-headers-$release=$version" >"$1/packages"
    fetch_packages "$(dpkg --print-architecture)" "linux-headers-${release%-*}-common=$version" \
        "linux-kbuild-$(echo "$release" | cut -d . -f 1-2)=$version" >>"$1/packages"
    while read -r file; do
        dpkg -x "$file" "$1"
    done <"$1/packages"
}
