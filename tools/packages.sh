# Sourced by the dev commands: install Debian packages that are missing.
# need_packages NAME...  installs what is not installed yet; stops when one cannot be had.

need_packages() {
    missing=
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -q '^installed$' ||
            missing="$missing $package"
    done
    [ -n "$missing" ] || return 0

    as_root=
    [ "$(id -u)" -eq 0 ] || as_root=sudo
    echo "Installing:$missing" >&2
    # An index refresh can fail in part; what counts is whether the packages can be had.
    $as_root apt-get update -qq >&2 || echo "The package index was refreshed only in part." >&2
    # shellcheck disable=SC2086
    if ! DEBIAN_FRONTEND=noninteractive $as_root apt-get install -y -qq --no-install-recommends \
        $missing >&2 </dev/null; then
        echo "Cannot install:$missing" >&2
        exit 1
    fi
}

build_packages='g++ cmake make pkg-config libnl-3-dev libnl-genl-3-dev'
bench_packages='iproute2 net-tools psmisc udhcpc udhcpd iperf libgtest-dev libgmock-dev libfaketime
    groff-base man-db'
companion_packages='libcli11-dev nlohmann-json3-dev libpugixml-dev libboost-dev'

# need_architecture DEBIAN_ARCH  lets this machine's package manager know a further architecture.
need_architecture() {
    as_root=
    [ "$(id -u)" -eq 0 ] || as_root=sudo
    case " $(dpkg --print-architecture) $(dpkg --print-foreign-architectures | tr '\n' ' ') " in
    *" $1 "*) ;;
    *) $as_root dpkg --add-architecture "$1" ;;
    esac
}
