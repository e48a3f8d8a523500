# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=sh disable=SC2154
# Sourced by the tests of the program: they say in $line, $db and $factory what they run with.

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

line() {
    "$program" --db "$db" "$@"
}

# An empty database at $db.
fresh() {
    case $db in
    postgres*)
        psql -q "$db" -c 'set client_min_messages to warning' \
            -c 'drop schema public cascade' -c 'create schema public'
        ;;
    *) rm -f "$db" "$db-wal" "$db-shm" "$db-journal" ;;
    esac
}

# status WANTED COMMAND...: runs it; its output is in $work/out and $work/err.
status() {
    wanted=$1
    shift
    got=0
    "$@" >"$work/out" 2>"$work/err" || got=$?
    [ "$got" -eq "$wanted" ] || {
        cat "$work/out" "$work/err" >&2
        fail "$* ended with $got instead of $wanted"
    }
}

# says FILE TEXT: the text stands in the file.
says() {
    grep -qF -e "$2" "$work/$1" || {
        cat "$work/$1" >&2
        fail "\"$2\" is missing above"
    }
}

# The value of a query of one number.
rows() {
    line export "$1" | tail -n +2 | wc -l
}

# acknowledged FILE: the reports that the output of "add --verbose" in it calls safe, in order. Its last
# line may be cut off.
acknowledged() {
    grep -a 'added' "$1" | grep -av ' read: ' | sed 's/: [0-9]* runs* added.*//' | sort -u
}

# present DATABASE: the reports whose runs stand in it, in order, one for each run.
present() {
    "$program" --db "$1" export runs | tail -n +2 | cut -d , -f 6 | sort
}
