# SPDX-License-Identifier: Apache-2.0
# Sourced: every command answers -h and --help before it does anything, and refuses what it does not
# know. The command defines usage(), which prints its text.
# answer_help WORDS...      prints the usage and ends when one of the words asks for it
# refuse [WHY]              why, and the usage, on standard error; ends with status 2
# at_most N WORDS...        refuses the first word that is too many
# form_of USUAL OTHER WORDS...  prints OTHER when that is the only word, USUAL without words; refuses others
# is_number WORD            true for a whole number from 1 on

answer_help() {
    for word in "$@"; do
        case $word in
        --) return ;;
        -h | --help) usage && exit 0 ;;
        esac
    done
}

refuse() {
    [ $# -eq 0 ] || echo "$1" >&2
    usage >&2
    exit 2
}

at_most() {
    count=$1
    shift
    [ $# -le "$count" ] || { shift "$count" && refuse "not understood: $1"; }
}

form_of() {
    usual=$1 other=$2
    shift 2
    case $# in
    0) echo "$usual" ;;
    *) [ "$*" = "$other" ] || refuse "not understood: $*"; echo "$other" ;;
    esac
}

is_number() {
    case $1 in
    '' | 0* | *[!0-9]*) return 1 ;;
    esac
}
