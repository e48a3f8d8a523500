# Sourced: daemons by name. Their output goes to $logs/NAME.

logs=/run/logs
pids=/run/pids

# start_daemon NAME COMMAND...  starts it in the background.
start_daemon() {
    mkdir -p "$logs" "$pids"
    daemon=$1
    shift
    "$@" >"$logs/$daemon" 2>&1 </dev/null &
    echo $! >"$pids/$daemon"
}

daemon_runs() {
    [ -e "$pids/$1" ] && kill -0 "$(cat "$pids/$1")" 2>/dev/null
}

# stop_daemon NAME [SIGNAL]  ends it and waits until it is gone.
stop_daemon() {
    kill "-${2:-TERM}" "$(cat "$pids/$1")" 2>/dev/null
    until_true 3 eval "! daemon_runs $1" || kill -KILL "$(cat "$pids/$1")"
    rm -f "$pids/$1"
}

stop_all_daemons() {
    for file in "$pids"/*; do
        [ -e "$file" ] && kill -KILL "$(cat "$file")" 2>/dev/null
    done
    rm -rf "$pids"
    killall -q -KILL wivex udhcpc udhcpd iperf wpa_supplicant hostapd
    true
}

# until_true SECONDS COMMAND...  waits for the command to succeed.
until_true() {
    tries=$(($1 * 10))
    shift
    while ! "$@"; do
        [ "$tries" -gt 0 ] || return 1
        tries=$((tries - 1))
        usleep 100000
    done
}
