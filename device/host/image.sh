# SPDX-License-Identifier: Apache-2.0
# Sourced: build the part of a device that stays the same from run to run: kernel, modules, daemons.
# build_image ARCH  leaves the two files that a machine boots at out/ARCH/kernel and out/ARCH/image.
# They are links into the cache, where an image stands under a key made of all that it is built from.
# Needs packages.sh, contents.sh and use_architecture.

build_image() (
    device=$1
    use_architecture "$(program_architecture "$device")"
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
    fetch_packages "$debian_arch" $(echo "$device_programs" | awk 'NF { print $1 }') \
        $device_libraries >"$scratch/packages"
    # Once more: after a refresh of the index the kernel's package may have another name.
    fetch_kernel >"$scratch/kernel-package" || fetch_kernel >"$scratch/kernel-package"

    key=$(cat "$scratch/packages" "$scratch/kernel-package" device/host/contents.sh device/host/image.sh |
        sha256sum | cut -c 1-16)
    kernel=$cache/images/$device-$key.kernel
    image=$cache/images/$device-$key.cpio
    if [ ! -e "$image" ] || [ ! -e "$kernel" ]; then
        echo "Building the $device device's image" >&2
        assemble_image
        find "$cache/images" -type f -mtime +30 -delete
    fi
    mkdir -p "out/$device"
    cp "$scratch/kernel-package" "out/$device/kernel-package"
    ln -sf "$kernel" "out/$device/kernel"
    ln -sf "$image" "out/$device/image"
)

fetch_kernel() (
    use_architecture "$device"
    fetch_packages "$debian_arch" "$(kernel_package "$debian_arch" "$(kernel_meta_package "$device")")"
)

assemble_image() {
    packages=$scratch/unpacked
    root=$scratch/root
    mkdir -p "$packages" "$cache/images"
    for name in bin dev etc lib/modules mnt out proc root run sbin sys tmp usr/bin usr/sbin \
        usr/lib var/lib/misc var/run; do
        mkdir -p "$root/$name"
    done
    take_programs
    take_modules
    archive "$root" >"$scratch/image"
    cp "$packages"/boot/vmlinuz-* "$kernel.$$" && mv "$kernel.$$" "$kernel"
    mv "$scratch/image" "$image.$$" && mv "$image.$$" "$image"
}

take_programs() {
    while read -r file; do
        name=$(basename "$file" | sed 's/_.*//')
        program=$(echo "$device_programs" | awk -v name="$name" '$1 == name { print $2 }')
        if [ -n "$program" ]; then
            dpkg --fsys-tarfile "$file" | tar -x -C "$root" "./$program"
        else
            dpkg -x "$file" "$packages"
        fi
    done <"$scratch/packages"

    for applet in sh init modprobe; do ln -s /bin/busybox "$root/bin/$applet"; done
    ln -s /bin/busybox "$root/sbin/modprobe" # the kernel's own requests go there
    ln -s /bin/busybox "$root/init"
    take_libraries
}

# Every library that a program or library asks for, until nothing new is asked for.
take_libraries() {
    loader=$(readelf -l "$root/sbin/wpa_supplicant" | sed -n 's/.*interpreter: \(.*\)]/\1/p')
    mkdir -p "$root/$(dirname "$loader")"
    cp -L "$packages/lib/$triplet/$(basename "$loader")" "$root$loader"
    mkdir -p "$root/lib/$triplet"
    for plugin in $device_plugins; do
        mkdir -p "$(dirname "$root/usr/lib/$triplet/$plugin")"
        cp "$packages/usr/lib/$triplet/$plugin" "$root/usr/lib/$triplet/$plugin"
    done
    before=-1 now=0
    while [ "$before" -ne "$now" ]; do
        before=$now
        for name in $(needed_libraries); do
            [ ! -e "$root/lib/$triplet/$name" ] || continue
            cp -L "$(find_library "$name")" "$root/lib/$triplet/$name"
        done
        now=$(find "$root/lib/$triplet" -type f | wc -l)
    done
}

needed_libraries() {
    find "$root" -type f \( -path '*bin/*' -o -name '*.so*' \) -exec readelf -d {} + 2>/dev/null |
        sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort -u
}

find_library() {
    for folder in "$packages/lib/$triplet" "$packages/usr/lib/$triplet"; do
        [ -e "$folder/$1" ] && echo "$folder/$1" && return
    done
    echo "no package of the device holds the library $1" >&2
    return 1
}

take_modules() {
    dpkg -x "$(cat "$scratch/kernel-package")" "$packages"
    version=$(ls "$packages/lib/modules")
    from=$packages/lib/modules/$version
    to=$root/lib/modules/$version
    mkdir -p "$to"
    depmod -b "$packages" "$version"
    wanted_modules "$from/modules.dep" | while read -r module; do
        mkdir -p "$to/$(dirname "$module")"
        cp "$from/$module" "$to/$module"
    done
    cp "$from"/modules.builtin* "$from/modules.order" "$to/"
    depmod -b "$root" "$version"
}

# The paths of the wanted modules and of all that they depend on, by the kernel's own list.
wanted_modules() {
    awk -v names="$device_modules" -v folders="$device_module_folders" '
        BEGIN { FS = ":? +|:"; split(names, list, "[ \n]+"); for (i in list) wanted[list[i]] = 1
                gsub(" +", "|", folders); folder = "^(" folders ")/" }
        { name = $1; sub(".*/", "", name); sub("[.]ko.*", "", name)
          if (name in wanted || $1 ~ folder) for (i = 1; i <= NF; i++) if ($i != "") print $i }
    ' "$1" | sort -u
}

# archive FOLDER  writes it to standard output in the form that a kernel unpacks at its start.
archive() {
    ( cd "$1" && find . | LC_ALL=C sort | cpio --quiet -o -H newc -R 0:0 )
}
