# SPDX-License-Identifier: Apache-2.0
# Sourced after packages.sh: the build of the fuzz targets, in build-fuzz.

configure_fuzz_build() {
    need_packages $build_packages $companion_packages clang libclang-rt-14-dev
    cmake -S . -B build-fuzz $develop -DWIVEX_FUZZ=ON -DWIVEX_TESTS=OFF -DWIVEX_TOGETHER=ON \
        -DWIVEX_DEVICE=OFF -DCMAKE_CXX_COMPILER=clang++ >/dev/null
}
