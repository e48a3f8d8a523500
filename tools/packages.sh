# SPDX-License-Identifier: Apache-2.0
# Sourced by the dev commands: install Debian packages that are missing.
# need_packages NAME...          installs what is not installed yet; stops when one cannot be had.
# need_architecture DEBIAN_ARCH  lets the package manager of this machine know a further architecture.

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# It can fail in part; what counts is whether the packages can be had.
refresh_index() {
    as_root apt-get update -qq >&2 || echo "The package index was refreshed only in part." >&2
}

need_packages() {
    missing=
    own=$(dpkg --print-architecture)
    for package in "$@"; do
        # A name without an architecture asks for this machine's own.
        case $package in
        *:*) architecture=${package#*:} ;;
        *) architecture="($own|all)" ;;
        esac
        dpkg-query -W -f '${db:Status-Status} ${Architecture}\n' "$package" 2>/dev/null |
            grep -qE "^installed $architecture\$" || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0

    # One command at a time installs: several can run side by side.
    (
        flock 9
        echo "Installing:$missing" >&2
        refresh_index
        # shellcheck disable=SC2086
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
            $missing >&2 </dev/null
    ) 9<tools/packages.sh || {
        echo "Cannot install:$missing" >&2
        exit 1
    }
}

build_packages='g++ cmake make pkg-config libnl-3-dev libnl-genl-3-dev'
bench_packages='iproute2 net-tools psmisc udhcpc udhcpd iperf libgtest-dev libgmock-dev libfaketime
    groff-base man-db socat'
# wivex-line stands on the companion; its tests run a PostgreSQL and a disk of their own.
line_build_packages='libsoci-dev libsqlite3-dev libpq-dev'
line_packages="$line_build_packages libfuse3-dev postgresql sqlite3"
companion_packages="libcli11-dev nlohmann-json3-dev libpugixml-dev libboost-dev libxxhash-dev $line_packages"

# What ./dev builds: everything, and a warning is an error. The defaults are for whoever packages it.
# shellcheck disable=SC2034 # for those who source this
develop='-DWIVEX_WERROR=ON -DWIVEX_TESTS=ON -DWIVEX_DEVICE=ON -DWIVEX_COMPANION=ON -DWIVEX_LINE=ON'

need_architecture() {
    case " $(dpkg --print-architecture) $(dpkg --print-foreign-architectures | tr '\n' ' ') " in
    *" $1 "*) ;;
    *) as_root dpkg --add-architecture "$1" ;;
    esac
}
