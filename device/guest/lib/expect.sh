# SPDX-License-Identifier: Apache-2.0
# Sourced: what a scenario expects. A miss prints what stood there instead and ends the scenario.

# expect_result LINE...  the result file holds exactly these lines.
expect_result() {
    printf '%s\n' "$@" >"$here/expected-result"
    cmp -s "$here/expected-result" /root/WIFIResult && return
    sed 's/^/#   /' /root/WIFIResult
    fail "the result file is not: $*"
}

expect_no_result() {
    [ ! -e /root/WIFIResult ] || fail "there is a result file"
}

# expect_out LINE [COUNT], expect_err LINE [COUNT]  the tool printed exactly this line, at least
# once or exactly COUNT times.
expect_out() {
    expect_line stdout "$1" "${2:-}"
}

expect_err() {
    expect_line stderr "$1" "${2:-}"
}

expect_line() {
    found=$(grep -cxF -- "$2" "$here/$1")
    if [ -n "$3" ]; then
        [ "$found" -eq "$3" ] || fail "on $1 $found times, not $3: $2"
    else
        [ "$found" -gt 0 ] || fail "not on $1: $2"
    fi
}

# expect_out_matching PATTERN [COUNT], expect_err_matching PATTERN [COUNT]  at least COUNT lines (1)
# match the regular expression.
expect_out_matching() {
    expect_matching stdout "$1" "${2:-1}"
}

expect_err_matching() {
    expect_matching stderr "$1" "${2:-1}"
}

expect_matching() {
    found=$(grep -cE -- "$2" "$here/$1")
    [ "$found" -ge "$3" ] || fail "on $1 $found times, not $3: $2"
}

expect_no_out() {
    ! grep -qF -- "$1" "$here/stdout" || fail "on stdout: $1"
}

# expect_order TEXT...  the lines stand on stdout in this order, others may stand between.
expect_order() {
    printf '%s\n' "$@" >"$here/expected-order"
    awk 'NR == FNR { wanted[NR] = $0; count = NR; next }
         next_one < count && $0 == wanted[next_one + 1] { next_one++ }
         END { if (next_one < count) { print "#   missing from here: " wanted[next_one + 1]; exit 1 } }
        ' "$here/expected-order" "$here/stdout" || fail "the lines are not in order"
}

# expect_status LINE  the device's supplicant says so about itself.
expect_status() {
    ask_supplicant STATUS >"$here/status" || fail "the supplicant does not answer"
    grep -qxF -- "$1" "$here/status" || fail "the supplicant's status lacks: $1"
}

# expect_network_field NAME VALUE  what the supplicant holds for the network that the tool set up.
expect_network_field() {
    value=$(ask_supplicant "GET_NETWORK 0 $1")
    [ "$value" = "$2" ] || fail "the network's $1 is $value, not $2"
}

# ask_supplicant COMMAND  prints its reply.
ask_supplicant() {
    echo "send $1" | control-script /var/run/wpa_supplicant/wlan0
}

# expect_log NAME TEXT  a daemon's output holds the text.
expect_log() {
    grep -qF -- "$2" "$logs/$1" || fail "not in the output of $1: $2"
}

expect_no_client_sockets() {
    left=$(find /tmp -name 'wpa_ctrl_*')
    [ -z "$left" ] || fail "left behind:" $left
}
