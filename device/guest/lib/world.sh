# SPDX-License-Identifier: Apache-2.0
# Sourced: the world around the tool. Needs basics.sh and daemons.sh.
# The device keeps wlan0; every other station stands in a room: a network namespace with a radio of
# its own, so that all they have in common with the device is the air.

begin_world() {
    modprobe mac80211_hwsim radios=4 support_p2p_device=0
    until_true 5 test -e /sys/class/net/wlan3 || fail "no radios"
    mkdir -p "$logs" /run/rooms /lib/modules/wifi
    rm -rf /tmp/* /root/* "${logs:?}"/*
    cp /device/wivex.cfg /lib/modules/wifi/wivex.cfg
}

end_world() {
    stop_all_daemons
    end_station
    restore_debugfs
    unload_drivers
    remove_usbfs
    unplug_module
    rmmod mac80211_hwsim # what it stands on stays: it takes long to load
    for file in /run/rooms/*; do
        [ -e "$file" ] && umount "$file" && rm "$file"
    done
    rm -rf /var/run/wpa_supplicant
}

# plug_module VENDOR:PRODUCT  puts a USB device with these ids (hexadecimal) on the bus.
plug_module() {
    modprobe dummy_hcd
    modprobe g_serial idVendor="0x${1%:*}" idProduct="0x${1#*:}"
    until_true 5 grep -q "Vendor=${1%:*} ProdID=${1#*:}" /sys/kernel/debug/usb/devices ||
        fail "the module does not come up on the bus: $1"
}

unplug_module() {
    [ -d /sys/module/g_serial ] || return 0
    modprobe -r g_serial # also fails when it leaves behind what others need
    [ ! -d /sys/module/g_serial ]
}

# add_usbfs  what kernels up to 3.4 have: the list of the USB bus, which outlives debugfs, where
# the tool looks for it with device_type=USB.
add_usbfs() {
    mount -t tmpfs usbfs /proc/bus
    mkdir /proc/bus/usb
    : >/proc/bus/usb/devices
    mount --bind /sys/kernel/debug/usb/devices /proc/bus/usb/devices
    configure device_type=USB
}

remove_usbfs() {
    ! grep -q ' /proc/bus/usb/devices ' /proc/mounts || umount /proc/bus/usb/devices
    ! grep -q '^usbfs /proc/bus ' /proc/mounts || umount /proc/bus
}

restore_debugfs() {
    grep -q ' /sys/kernel/debug debugfs' /proc/mounts || mount -t debugfs debugfs /sys/kernel/debug
}

# make_room NAME INTERFACE  moves the interface's radio into a room of its own.
make_room() {
    : >"/run/rooms/$1"
    unshare --net="/run/rooms/$1" ifconfig lo 127.0.0.1 up
    move-radio "$2" "/run/rooms/$1" || fail "the radio of $2 cannot be moved"
}

# in_room NAME COMMAND...
in_room() {
    room=$1
    shift
    nsenter --net="/run/rooms/$room" "$@"
}

# start_in_room NAME DAEMON COMMAND...  as start_daemon does, inside a room.
start_in_room() {
    room=$1 daemon=$2
    shift 2
    start_daemon "$daemon" nsenter --net="/run/rooms/$room" "$@"
}

# start_access_point ROOM INTERFACE SETTINGS  hostapd with the given settings lines, on channel 1
# unless they say otherwise.
start_access_point() {
    {
        echo "interface=$2"
        echo "driver=nl80211"
        echo "hw_mode=g"
        echo "channel=1"
        echo "$3"
    } >"/run/$1.hostapd"
    start_in_room "$1" "$1.hostapd" hostapd "/run/$1.hostapd"
    until_true 10 grep -q AP-ENABLED "$logs/$1.hostapd" || fail "no access point in $1"
}

# start_services ROOM INTERFACE ADDRESS  a DHCP server and an iperf server at this address of a /24, to
# which wlan0 does not send too much.
start_services() {
    in_room "$1" ifconfig "$2" "$3" netmask 255.255.255.0
    dhcp_server_settings "$1" "$2" "$3" >"/run/$1.udhcpd"
    start_in_room "$1" "$1.udhcpd" udhcpd -f "/run/$1.udhcpd"
    start_in_room "$1" "$1.iperf" iperf -s
    slow_down wlan0
}

# slow_down INTERFACE  lets it send no more than 500 kbit/s. The simulated air carries as much as the
# processor can encrypt, and nothing else would an emulated one do while iperf runs.
slow_down() {
    # The shell has a smaller program of this name built in.
    /sbin/tc qdisc add dev "$1" root tbf rate 500kbit burst 10kb latency 200ms ||
        fail "cannot be slowed down: $1"
}

# dhcp_server_settings NAME INTERFACE ADDRESS  for udhcpd, which leases .50 to .60 of this /24.
dhcp_server_settings() {
    : >"/run/$1.leases"
    cat <<END
interface $2
start ${3%.*}.50
end ${3%.*}.60
lease_file /run/$1.leases
pidfile /run/$1.udhcpd.pid
option subnet 255.255.255.0
END
}

# Settings lines for start_access_point, by kind of security:
# wpa2 SSID PASSPHRASE, wpa SSID PASSPHRASE, mixed SSID PASSPHRASE, unsecured SSID.
wpa2() {
    psk_settings "$1" "$2" 'wpa=2' 'rsn_pairwise=CCMP'
}

wpa() {
    psk_settings "$1" "$2" 'wpa=1' 'wpa_pairwise=TKIP'
}

mixed() {
    psk_settings "$1" "$2" 'wpa=3' 'wpa_pairwise=CCMP TKIP' 'rsn_pairwise=CCMP TKIP'
}

psk_settings() {
    unsecured "$1"
    printf 'wpa_key_mgmt=WPA-PSK\nwpa_passphrase=%s\n' "$2"
    shift 2
    printf '%s\n' "$@"
}

unsecured() {
    printf 'ssid=%s\n' "$1"
}

# start_supplicant NAME INTERFACE DIRECTORY [ROOM]  the daemon, with its control sockets under
# DIRECTORY, in a room or on the device itself.
start_supplicant() {
    cat >"/run/$1.conf" <<END
ctrl_interface=$3
p2p_no_group_iface=1
device_name=$1
END
    rm -f "$3/$2" # a killed one leaves its socket behind
    start_daemon "$1" ${4:+nsenter "--net=/run/rooms/$4"} \
        wpa_supplicant -D nl80211 -i "$2" -c "/run/$1.conf"
    until_true 10 test -S "$3/$2" || fail "no control socket of $1"
}

# start_go_between INTERFACE DIRECTORY SUPPLICANT_DIRECTORY  control sockets under DIRECTORY for a
# supplicant that knows how to start a group with a given name and pass phrase.
start_go_between() {
    mkdir -p "$2"
    rm -f "$2/$1"
    start_daemon go-between go-between "$2/$1" "$3/$1"
    until_true 10 test -S "$2/$1" || fail "no go-between"
}

# config_value KEY  what the tool's configuration file says.
config_value() {
    sed -n "s/^$1=//p" /lib/modules/wifi/wivex.cfg | tail -n 1
}
