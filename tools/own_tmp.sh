# SPDX-License-Identifier: Apache-2.0
# Sourced by the dev commands: a /tmp of their own.

# with_own_tmp COMMAND...  with a /tmp in memory that no one else sees, where that can be had. Over the many
# small files of the tests a disk's file system takes longer than they do themselves; and each session with a
# supplicant removes the sockets of all others there.
with_own_tmp() {
    case $(id -u):$PWD/ in
    0:/tmp/*) ;;
    0:*)
        if unshare --mount mount -t tmpfs tmpfs /tmp 2>/dev/null; then
            # shellcheck disable=SC2016 # the inner shell's own
            set -- unshare --mount sh -euc 'mount -t tmpfs tmpfs /tmp; exec "$@"' sh "$@"
        fi
        ;;
    esac
    "$@"
}
