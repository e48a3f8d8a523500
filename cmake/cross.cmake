# SPDX-License-Identifier: Apache-2.0
# Toolchain file for Debian's cross compilers: give the target as -DWIVEX_TRIPLET=arm-linux-gnueabihf.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES WIVEX_TRIPLET)

string(REGEX MATCH "^[^-]+" CMAKE_SYSTEM_PROCESSOR "${WIVEX_TRIPLET}")
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${WIVEX_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${WIVEX_TRIPLET}-g++)
# Debian names the libraries of this one processor otherwise than its compiler.
string(REPLACE i686 i386 CMAKE_LIBRARY_ARCHITECTURE "${WIVEX_TRIPLET}")
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:/usr/share/pkgconfig)
