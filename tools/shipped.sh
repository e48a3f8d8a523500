# SPDX-License-Identifier: Apache-2.0
# Sourced: what the suites say of a program that is shipped, and the sources that they build it from.
# version                   of the sources, as the packages carry it
# tells_version COMMAND...  the command, which starts wivex, tells this version with -v
# tells_usage COMMAND...    and its usage with -h
# last_commit FOLDER        makes the folder and copies the last commit into it
# products ARCH...          lists what ./dev package left for them in this folder (needs architectures.sh)
# same_products COUNT ONE ANOTHER ARCH...  so many of them in both folders, and all equal byte for byte; notes
#                           them in $out/products

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

products() {
    for product_arch in "$@"; do
        use_architecture "$product_arch"
        find out/packages -name "*_$debian_arch.deb"
        find "out/$arch" -maxdepth 1 -type f \( -name wivex -o -name wivex-static -o -name wivex-doctor -o -name wivex-report -o -name wivex-line \)
    done | sort
}

same_products() {
    count=$1 one=$2 another=$3
    shift 3
    (cd "$one" && products "$@") >"$out/products"
    (cd "$another" && products "$@") | diff "$out/products" -
    [ "$(wc -l <"$out/products")" -eq "$count" ]
    while read -r product; do
        cmp "$one/$product" "$another/$product"
        sha256sum "$one/$product"
    done <"$out/products"
}
