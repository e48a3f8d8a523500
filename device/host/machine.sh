# SPDX-License-Identifier: Apache-2.0
# Sourced: put an emulated device together and switch it on.
#
# prepare_device ARCH        installs what this machine lacks, builds the tool and the device's image.
# boot_device ARCH JOB OUT   boots the prepared device with the script JOB as its task; OUT is the
#                            folder it shares with us.
# came_through OUT           true when the device got to its end and its job succeeded.
# Set before boot_device: work (a scratch folder; the file "pid" there holds the number of the emulator's
# process), processor (emulated, counted or kvm), time_limit (seconds, may be unset), config (the tool's
# configuration), station (that of station.sh, may be unset), counters (yes, may be unset: the kernel can count
# the instructions of a counted ARM processor, and has the same chance numbers at each boot).
# The device's console is its standard input and output.

prepare_device() {
    need_packages "$(emulator_package "$1")" binutils cpio kmod
    (use_architecture "$1" && need_architecture "$debian_arch")
    programs=$(program_architecture "$1")
    tools/dev-build --arch "$programs"
    tools/dev-build --arch "$programs" --static
    tools/dev-build --arch "$programs" --target wivex-doctor
    tools/dev-build --arch "$programs" --target device_programs
    [ "$1" != x86_64 ] || tools/dev-build --arch i386 --static
    build_image "$1"
    build_drivers "$1"
}

boot_device() (
    arch=$1
    add_overlay "$2"
    cat "out/$arch/image" "$work/$arch.overlay" >"$work/$arch.initrd"
    rm -f "$3/finished"
    limit=
    [ -z "${time_limit:-}" ] || limit="timeout $time_limit"
    counting=$(counters_of_processor) || exit
    # shellcheck disable=SC2046
    $limit $(machine) $(accelerator) -m 1024 $(hardware) $counting \
        -pidfile "$work/pid" -nodefaults -display none -no-reboot \
        -chardev stdio,id=console,signal="$(console_signals)" -serial chardev:console \
        -kernel "out/$arch/kernel" -initrd "$work/$arch.initrd" \
        -append "$(consoles) quiet loglevel=3 panic=-1 $(kernel_options)" \
        -fsdev local,id=out,path="$3",security_model=none \
        -device virtio-9p-pci,fsdev=out,mount_tag=out
)

came_through() {
    [ "$(cat "$1/finished" 2>/dev/null)" = 0 ]
}

emulator_package() {
    case $1 in
    armhf | arm64) echo qemu-system-arm ;;
    x86_64) echo qemu-system-x86 ;;
    esac
}

machine() {
    case $arch in
    armhf) echo qemu-system-arm -M virt,highmem=off -cpu cortex-a15 ;;
    arm64) echo qemu-system-aarch64 -M virt,highmem=off -cpu cortex-a57 ;;
    x86_64) echo qemu-system-x86_64 -M q35 -cpu max ;;
    esac
}

# A counted processor takes its time from the instructions that it executes, 4 ns each, and skips the
# time in which it has nothing to do. So the emulated device misses no moment when this machine is busy,
# and waits cost nothing; but its clock is not that of a person in front of it. There is one such
# processor only: with two of them an emulated device does not come through its start.
accelerator() {
    case $processor in
    emulated) echo -accel tcg -smp 2 ;;
    counted) echo -accel tcg,thread=single -smp 1 -icount shift=2,sleep=off -rtc clock=vm ;;
    kvm) echo -accel kvm -smp 2 ;;
    esac
}

# The emulated processor can count, but the emulator does not tell the kernel so: it describes the machine without
# what the kernel has to know of the counters. This is added: their kind, and the interrupt that they make.
# Prints the emulator's options for that.
counters_of_processor() {
    [ -n "${counters:-}" ] || return 0
    tree=$work/$arch.device-tree
    if $(machine) -machine dumpdtb="$tree" $(accelerator) -m 1024 -nodefaults -display none 2>"$tree.log" &&
        fdtput -t s "$tree" /pmu compatible arm,cortex-a15-pmu &&
        fdtput -t x "$tree" /pmu interrupts 1 7 104; then
        echo "-seed 1 -dtb $tree"
    else
        cat "$tree.log" >&2
        return 1
    fi
}

# What stands beside the device and is not part of it.
hardware() {
    if [ -n "${station:-}" ]; then station_hardware; else echo -monitor none; fi
}

# The last is the one of the device itself. ARM's is no 8250, of which the kernel takes one for a console:
# there it can speak on the port of the station as well.
consoles() {
    [ "$arch" != armhf ] || [ -z "${station:-}" ] || printf 'console=ttyS0,115200 '
    echo "console=$(console_name)"
}

# The emulator translates a program once more wherever else it lies: in the suite it lies always in one place.
kernel_options() {
    [ "$processor" != counted ] || echo norandmaps
}

console_name() {
    case $arch in
    armhf | arm64) echo ttyAMA0 ;;
    x86_64) echo ttyS0 ;;
    esac
}

# On a terminal ^C belongs to the program in the device, elsewhere it ends the emulator.
console_signals() {
    if [ -t 0 ]; then echo off; else echo on; fi
}

# What changes from run to run: the tool, our programs and scripts, the job, the configuration.
add_overlay() {
    root=$work/$arch.root
    programs=out/$(program_architecture "$arch")
    mkdir -p "$root/etc/udhcpc" "$root/usr/bin" "$root/device/drivers"
    cp "$programs/wivex" "$programs/wivex-static" "$programs/wivex-doctor" "$root/usr/bin/"
    [ "$arch" != x86_64 ] || cp out/i386/wivex-static "$root/usr/bin/wivex-32-bit"
    for program in as-kernel-3-2 ask-driver bare-associate bare-scan bare-wait control-script \
        count-instructions go-between move-radio silent-supplicant; do
        cp "$programs/build/device/$program" "$root/usr/bin/"
    done
    cp device/guest/inittab "$root/etc/inittab"
    cp device/guest/udhcpc.script "$root/etc/udhcpc/default.script"
    cp -r device/guest/start device/guest/main device/guest/run-tool device/guest/run-suite \
        device/guest/run-counts device/guest/lib device/scenarios examples "$root/device/"
    cp "out/$arch/drivers"/*.ko "$root/device/drivers/"
    cp "$config" "$root/device/wivex.cfg"
    cp "$1" "$root/device/job"
    archive "$root" >"$work/$arch.overlay"
    rm -rf "$root"
}
