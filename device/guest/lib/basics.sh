# SPDX-License-Identifier: Apache-2.0
# Sourced first: what every other file of this folder uses.

# fail REASON  ends the scenario, or whatever else this shell does.
fail() {
    echo "# $1"
    exit 1
}

# until_true SECONDS COMMAND...  waits for the command to succeed; false when the time is up.
until_true() {
    tries=$(($1 * 10))
    shift
    while ! "$@"; do
        [ "$tries" -gt 0 ] || return 1
        tries=$((tries - 1))
        usleep 100000
    done
}

# process_is_gone PID  true also for one that has ended and that nobody has asked for yet.
process_is_gone() {
    ! grep -qs '^State:[[:space:]]*[^Z]' "/proc/$1/status"
}
