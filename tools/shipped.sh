# SPDX-License-Identifier: Apache-2.0
# Sourced: what the suites say of a program that is shipped, and the sources that they build it from.
# version                   of the sources, as the packages carry it
# tells_version COMMAND...  the command, which starts wivex, tells this version with -v
# tells_usage COMMAND...    and its usage with -h
# last_commit FOLDER        makes the folder and copies the last commit into it

# shellcheck disable=SC2034 # for those who source this
version=$(sed -n '1s/.*(\(.*\)).*/\1/p' packaging/changelog)

tells_version() {
    "$@" -v | grep -qxF "[WIFI]Wivex Version $version"
}

tells_usage() {
    "$@" -h | grep -qxF 'Usage: wivex  -m <count> '
}

last_commit() {
    mkdir -p "$1"
    git archive HEAD | tar -x -C "$1"
}
