# SPDX-License-Identifier: Apache-2.0
# Sourced: what each target architecture is called by the compiler and by Debian.
# use_architecture NAME         sets arch, debian_arch, triplet, suffix (of a package's name), crossing,
#                               compiler_package, strip and emulator (the names of these programs).
# known_architectures NAME...   refuses one that is unknown (needs usage.sh)

architectures='armhf arm64 armel x86_64'

native_architecture() {
    case $(dpkg --print-architecture) in
    amd64) echo x86_64 ;;
    *) dpkg --print-architecture ;;
    esac
}

use_architecture() {
    arch=$1
    [ "$arch" != native ] || arch=$(native_architecture)
    debian_arch=$arch
    case $arch in
    armhf) triplet=arm-linux-gnueabihf emulator=qemu-arm ;;
    arm64) triplet=aarch64-linux-gnu emulator=qemu-aarch64 ;;
    armel) triplet=arm-linux-gnueabi emulator=qemu-arm ;;
    x86_64) triplet=x86_64-linux-gnu emulator=qemu-x86_64 debian_arch=amd64 ;;
    i386) triplet=i686-linux-gnu emulator=qemu-i386 ;; # not shipped: the device suite runs it on a 64-bit kernel
    *)
        echo "unknown architecture: $arch (one of: $architectures)" >&2
        return 2
        ;;
    esac
    if [ "$debian_arch" = "$(dpkg --print-architecture)" ]; then
        crossing=no suffix='' compiler_package=g++ strip=strip
    else
        crossing=yes suffix=:$debian_arch compiler_package=g++-$(echo "$triplet" | tr _ -) strip=$triplet-strip
    fi
}

known_architectures() {
    for name in "$@"; do
        (use_architecture "$name" 2>/dev/null) || refuse "unknown architecture: $name"
    done
}
