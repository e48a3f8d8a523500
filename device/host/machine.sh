# Sourced: put a device together and switch it on.
# boot_device ARCH JOB OUT  boots it with the script JOB as its task; OUT is its shared folder.
# Set before: work (a scratch folder), accelerator (tcg or kvm), config (the tool's configuration).
# The device's console is this command's standard input and output.
# Result: 0 when the device came through and its job succeeded.

boot_device() (
    arch=$1 job=$2 out=$3
    work=$work/$arch
    mkdir -p "$work" "$out"
    rm -f "$out/finished"
    build_image "$arch"
    add_overlay "$job"
    cat "$image" "$work/overlay" >"$work/initrd"
    # shellcheck disable=SC2046
    qemu-system-"$(emulator_name)" $(machine_options) -accel "$accelerator" -smp 2 -m 1024 \
        -display none -monitor none -no-reboot -nodefaults -net none \
        -chardev stdio,id=console,signal="$(console_signals)" -serial chardev:console \
        -kernel "$kernel" -initrd "$work/initrd" \
        -append "console=$(console_name) quiet loglevel=3 panic=-1" \
        -fsdev local,id=out,path="$out",security_model=none \
        -device virtio-9p-pci,fsdev=out,mount_tag=out
    [ "$(cat "$out/finished" 2>/dev/null)" = 0 ]
)

emulator_name() {
    case $arch in
    armhf) echo arm ;;
    *) echo "$arch" ;;
    esac
}

machine_options() {
    case $arch in
    armhf) echo -M virt,highmem=off -cpu cortex-a15 ;;
    x86_64) echo -M q35 -cpu max ;;
    esac
}

console_name() {
    case $arch in
    armhf) echo ttyAMA0 ;;
    x86_64) echo ttyS0 ;;
    esac
}

# On a terminal ^C belongs to the program in the device, elsewhere it ends the emulator.
console_signals() {
    if [ -t 0 ]; then echo off; else echo on; fi
}

# What changes from run to run: the tool, our programs and scripts, the job, the configuration.
add_overlay() {
    root=$work/overlay-root
    rm -rf "$root"
    mkdir -p "$root/etc/udhcpc" "$root/usr/bin" "$root/device"
    cp "out/$arch/wivex" "out/$arch/build/device/control-script" \
        "out/$arch/build/device/move-radio" "$root/usr/bin/"
    cp device/guest/inittab "$root/etc/inittab"
    cp device/guest/udhcpc.script "$root/etc/udhcpc/default.script"
    cp -r device/guest/start device/guest/main device/guest/lib device/scenarios "$root/device/"
    cp "$config" "$root/device/wivex.cfg"
    cp "$1" "$root/device/job"
    ( cd "$root" && find . | LC_ALL=C sort | cpio --quiet -o -H newc -R 0:0 ) >"$work/overlay"
}
