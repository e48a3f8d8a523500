# SPDX-License-Identifier: Apache-2.0
# Sourced: a station of a production line, beside an emulated device. It reaches the device through ssh over
# the emulated Ethernet and through the emulated serial port, as an engineer's computer would.
# Set before: station (a scratch folder, for the sockets and the key).
#
# prepare_station            installs and builds what a station needs
# open_station OUT           makes the key of the station, and the folder of what it and the device say
# station_hardware           the emulator's options for Ethernet, serial port and its own monitor
# attend_device OUT          until it is ended: does what a scenario asks for (device/guest/lib/station.sh)

station_patience=900 # seconds for one recipe

prepare_station() {
    need_packages openssh-client socat
    tools/dev-build --target wivex-report
}

open_station() {
    mkdir -p "$station/bin" "$1/station"
    rm -f "$1"/station/*
    ln -sf "$PWD/build/companion/wivex-report" "$station/bin/wivex-report"
    ssh-keygen -q -t ed25519 -N '' -C station -f "$station/key" </dev/null
    cp "$station/key.pub" "$1/station/"
}

# The port of this machine that leads to the ssh server is chosen by the emulator, which tells it.
station_hardware() {
    echo "-netdev user,id=station-net,restrict=on,hostfwd=tcp:127.0.0.1:0-:22" \
        "-device virtio-net-pci,netdev=station-net" \
        "-chardev socket,id=station-port,path=$station/serial,server=on,wait=off" \
        "-device pci-serial,chardev=station-port" \
        "-monitor unix:$station/monitor,server=on,wait=off"
}

attend_device() {
    recipe=
    trap '[ -z "$recipe" ] || kill "$recipe"; exit' TERM
    while sleep 1; do
        [ -e "$1/station/asked" ] || continue
        read -r name folder <"$1/station/asked"
        rm "$1/station/asked"
        mkdir -p "$1/$folder/station"
        timeout "$station_patience" "device/stations/$name" "$station" "$PWD/examples" "$1/$folder/station" \
            >"$1/$folder/station/log" 2>&1 </dev/null &
        recipe=$!
        status=0
        wait "$recipe" || status=$?
        recipe=
        echo "$status" >"$1/station/new" && mv "$1/station/new" "$1/station/answered"
    done
}
