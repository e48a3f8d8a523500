# SPDX-License-Identifier: Apache-2.0
# Sourced first: what every other file of this folder uses.

# fail REASON  ends the scenario, or whatever else this shell does.
fail() {
    echo "# $1"
    exit 1
}

# short_pause: a tenth of a second, spent on a pipe that nobody writes to. To start a program that sleeps
# costs an emulated processor more than the rest of a wait does.
silence=/run/silence
[ -p $silence ] || mkfifo $silence
short_pause() {
    # shellcheck disable=SC3045 # the device's shell knows the limit of time
    read -r -t 0.1 _ <>$silence || true
}

# until_true SECONDS COMMAND...  waits for the command to succeed; false when the time is up.
until_true() {
    tries=$(($1 * 10))
    shift
    while ! "$@"; do
        [ "$tries" -gt 0 ] || return 1
        tries=$((tries - 1))
        short_pause
    done
}

# process_is_gone PID  true also for one that has ended and that nobody has asked for yet.
process_is_gone() {
    { read -r _ _ state _ <"/proc/$1/stat"; } 2>/dev/null || return 0
    [ "$state" = Z ]
}
