# SPDX-License-Identifier: Apache-2.0
# Sourced: run the tool as a person at the device would. Needs basics.sh.
# $here is the folder that keeps what it printed: the files stdout and stderr.
program=wivex # or wivex-static, the same in one file without dependencies

# configure LINE...  adds lines to the tool's configuration; of two with the same key the later wins.
configure() {
    for line in "$@"; do echo "$line" >>/lib/modules/wifi/wivex.cfg; done
}

# run_tool OPTIONS...  from start to end.
run_tool() {
    start_tool "$@"
    finish_tool
}

# ask_doctor OPTIONS...  what it says before the run; held against the run when this ends by itself.
ask_doctor() {
    doctor_status=0
    wivex-doctor "$@" >"$here/doctor" 2>&1 </dev/null || doctor_status=$?
}

# Everything that it foretold was printed; and what it can always see was not printed unforetold.
expect_the_doctor_was_right() {
    sed -n 's/^ *the run prints: //p' "$here/doctor" >"$here/foretold"
    while read -r text; do
        grep -qF -- "$text" "$here/stdout" "$here/stderr" || fail "foretold and not printed: $text"
    done <"$here/foretold"
    # What begins during the run cannot be seen before it: such a scenario sets begins_later.
    [ -n "${begins_later:-}" ] || [ "$doctor_status" -ne 0 ] ||
        ! grep -E 'ERROR:(Module not inserted|WiFi (driver|network))|: not found$' "$here/stdout" "$here/stderr" ||
        fail 'printed and not foretold'
}

# start_tool OPTIONS...  in the background, as the leader of its own process group.
start_tool() {
    ask_doctor "$@"
    : >"$here/stdout"
    # shellcheck disable=SC2086 # a program may stand behind another
    setsid $program "$@" >"$here/stdout" 2>"$here/stderr" </dev/null &
    tool=$!
}

# finish_tool [SECONDS]  waits for its end; a run that does not end by itself is a failure.
finish_tool() {
    until_true "${1:-150}" process_is_gone "$tool" || fail "the tool is still running after ${1:-150} s"
    wait "$tool"
    status=$?
    [ "$status" -eq 0 ] || fail "the tool ended with status $status"
    expect_the_doctor_was_right
}

# await_out SECONDS LINE [COUNT]  until the tool has printed this line (so many times).
await_out() {
    until_true "$1" printed "$2" "${3:-1}" || fail "not printed within $1 s: $2"
}

printed() {
    [ "$(grep -cxF -- "$1" "$here/stdout")" -ge "$2" ]
}

# await_out_matching SECONDS PATTERN  until a line that it has printed matches the expression.
await_out_matching() {
    until_true "$1" grep -qE -- "$2" "$here/stdout" || fail "no such line within $1 s: $2"
}

# press_ctrl_c: SIGINT to the tool and to all that it has started, as a terminal sends it.
press_ctrl_c() {
    kill -INT -- "-$tool"
}
