# SPDX-License-Identifier: Apache-2.0
# Sourced: the statements of a suite. Needs out, the folder of its logs.
# verdict WHAT COMMAND...   prints "ok WHAT", or "not ok WHAT" and the last lines of the command's output,
#                           which stands in a log of its own. The command ends at its first failure: no
#                           "if" may stand around the call.
# tally EXPECTED FILE...    counts both in these reports; true when nothing failed and as many passed as
#                           were expected, so that none was left out.

verdict() {
    what=$1 log=$out/log.$(echo "$1" | tr ' /' '_.')
    shift
    set +e
    (set -e && "$@") >"$log" 2>&1
    status=$?
    set -e
    if [ "$status" -eq 0 ]; then
        echo "ok $what"
    else
        echo "not ok $what"
        tail -n 20 "$log" | sed 's/^/#   /'
    fi
}

tally() {
    expected=$1
    shift
    passed=$(cat "$@" | grep -c '^ok ') || true
    failed=$(cat "$@" | grep -c '^not ok ') || true
    echo "$passed passed, $failed failed"
    [ "$failed" -eq 0 ] && [ "$passed" -eq "$expected" ]
}
