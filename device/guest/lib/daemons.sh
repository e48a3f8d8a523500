# SPDX-License-Identifier: Apache-2.0
# Sourced: daemons by name. Their output goes to $logs/NAME. Needs basics.sh.

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

# stop_daemon NAME [SIGNAL]  ends it and waits until it is gone.
stop_daemon() {
    pid=$(cat "$pids/$1")
    kill "-${2:-TERM}" "$pid"
    until_true 3 process_is_gone "$pid" || fail "still running: $1"
    rm -f "$pids/$1"
}

# finish_daemon NAME SECONDS  waits for one that ends by itself, with success.
finish_daemon() {
    pid=$(cat "$pids/$1")
    until_true "$2" process_is_gone "$pid" || fail "still running after $2 s: $1"
    rm -f "$pids/$1"
    wait "$pid" || fail "ended without success: $1"
}

# await_log NAME SECONDS TEXT  until a daemon's output holds the text.
await_log() {
    until_true "$2" grep -qF -- "$3" "$logs/$1" || fail "not in the output of $1 within $2 s: $3"
}

stop_all_daemons() {
    for file in "$pids"/*; do
        [ -e "$file" ] && kill -KILL "$(cat "$file")" 2>/dev/null
    done
    rm -rf "$pids"
    killall -q -KILL wivex udhcpc udhcpd iperf wpa_supplicant hostapd
    true
}
