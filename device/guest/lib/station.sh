# SPDX-License-Identifier: Apache-2.0
# Sourced: a station of a production line, which stands on the host and reaches this device over Ethernet and
# its serial port. Needs basics.sh and daemons.sh.

# attended RECIPE  the station does the recipe device/stations/RECIPE with this device, and is content.
attended() {
    keep_pace
    rm -f /out/station/answered
    echo "$1 ${here##*/}" >/out/station/new
    mv /out/station/new /out/station/asked
    until_true 900 test -e /out/station/answered || fail "the station does not answer"
    [ "$(cat /out/station/answered)" = 0 ] && return
    sed 's/^/#   /' "/out/${here##*/}/station/log"
    fail "the station is not content: $1"
}

# A counted processor that has nothing to do skips the time, and the station would always be too late. So it
# is given something to do.
keep_pace() {
    start_daemon pace sh -c 'while :; do :; done'
    renice 19 "$(cat "$pids/pace")" >/dev/null
}

# serve_ssh  on Ethernet, for the key of the station alone.
serve_ssh() {
    modprobe virtio_net
    until_true 5 test -e /sys/class/net/eth0 || fail "no Ethernet"
    ifconfig eth0 10.0.2.15 netmask 255.255.255.0 up
    mkdir -p /etc/dropbear /root/.ssh
    cp /out/station/key.pub /root/.ssh/authorized_keys
    know_root
    start_daemon ssh-server dropbear -F -E -R -s
}

# serve_serial_port PASSWORD  a login, as on the console of a device.
serve_serial_port() {
    know_root "$(mkpasswd -m sha512 "$1")"
    port=$(serial_port) || fail "no serial port"
    start_daemon getty getty -L "$port" 115200 vt100
}

# The name of the serial port that stands on the PCI bus.
serial_port() {
    for port in /sys/class/tty/ttyS*; do
        case $(readlink -f "$port/device/subsystem") in
        */pci) echo "${port##*/}" && return ;;
        esac
    done
    return 1
}

# know_root [HASH]  who may log in.
know_root() {
    echo "root:${1:-*}:0:0:root:/root:/bin/sh" >/etc/passwd
    echo /bin/sh >/etc/shells
}

end_station() {
    dmesg -n 3 # serial-run silences the kernel
    killall -q -KILL dropbear getty login
    [ ! -d /sys/module/virtio_net ] || rmmod virtio_net
    rm -rf /root/.ssh /etc/passwd /etc/shells
}
