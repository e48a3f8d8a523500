# SPDX-License-Identifier: Apache-2.0
# Sourced: what an emulated device is made of. Package names are Debian's.

# The kernel of an emulated device, and whose programs run on it: on arm64 those of a 32-bit system.
kernel_meta_package() {
    case $1 in
    armhf) echo linux-image-armmp ;;
    x86_64) echo linux-image-amd64 ;;
    arm64) echo linux-image-arm64 ;;
    *) echo "no emulated device for the architecture $1 (armhf, x86_64 or arm64)" >&2 && return 2 ;;
    esac
}

program_architecture() {
    case $1 in
    arm64) echo armhf ;;
    *) echo "$1" ;;
    esac
}

# Programs: package and the one file taken out of it.
device_programs='
busybox-static  bin/busybox
wpasupplicant   sbin/wpa_supplicant
hostapd         usr/sbin/hostapd
iperf           usr/bin/iperf
dropbear-bin    usr/sbin/dropbear
iproute2        sbin/tc
'

# Where the libraries that the programs ask for are looked for.
device_libraries='libc6 libgcc-s1 libstdc++6 libnl-3-200 libnl-genl-3-200 libnl-route-3-200
    libssl3 libdbus-1-3 libpcsclite1 libreadline8 libtinfo6 libsystemd0 libcap2 libgcrypt20
    libgpg-error0 liblz4-1 liblzma5 libzstd1 libcrypt1 libtomcrypt1 libtommath1 zlib1g libgmp10
    libbpf1 libbsd0 libelf1 libmd0 libmnl0 libxtables12'

# Libraries that no program names but that are loaded by their path: RC4, for WPA access points.
device_plugins='ossl-modules/legacy.so'

# Kernel modules, each with all that it depends on; the kernel asks for the ciphers by itself.
device_modules='mac80211_hwsim dummy_hcd g_serial usb_f_acm usb_f_serial usb_f_obex
    9p 9pnet_virtio virtio_mmio virtio_pci virtio_net af_packet sch_tbf'
device_module_folders='kernel/crypto kernel/arch/[a-z0-9]*/crypto'
