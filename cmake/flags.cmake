# SPDX-License-Identifier: Apache-2.0
# Flags of every target, and what the shipped binary adds to them. The user's own (CXXFLAGS, LDFLAGS, a
# toolchain file) stand before these and hold where both speak of one thing.

string(TOUPPER "${CMAKE_BUILD_TYPE}" wivex_build_type)
set(wivex_user_flags "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_${wivex_build_type}}")

add_library(wivex_flags INTERFACE)
target_compile_options(wivex_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 $<$<BOOL:${WIVEX_WERROR}>:-Werror>)
# 64-bit times on 32-bit devices too; on a kernel without them the C library uses the old calls.
target_compile_definitions(wivex_flags INTERFACE _FILE_OFFSET_BITS=64 _TIME_BITS=64)

# Where a tree stands leaves no trace in what is built. (Coverage looks for its sources there.)
if(NOT WIVEX_COVERAGE)
  target_compile_options(wivex_flags INTERFACE
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=.)
endif()

if(WIVEX_FUZZ)
  target_compile_options(wivex_flags INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -O1 -g1)
  target_link_options(wivex_flags INTERFACE -fsanitize=address,undefined)
elseif(WIVEX_SANITIZE)
  target_compile_options(wivex_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  target_link_options(wivex_flags INTERFACE -fsanitize=address,undefined)
elseif(NOT WIVEX_COVERAGE)
  target_compile_options(wivex_flags INTERFACE
    $<IF:$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>,-fPIC,-fPIE>
    -ffunction-sections -fdata-sections -fstack-protector-strong)
  # The C library fortifies only what is optimised, and would warn of the rest.
  if(wivex_user_flags MATCHES "-O([1-3sgz]|fast)" AND NOT wivex_user_flags MATCHES "_FORTIFY_SOURCE")
    target_compile_options(wivex_flags INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  endif()
endif()

# Debian's C library for 32-bit ARM lacks what a static position-independent program starts with.
if(WIVEX_STATIC)
  include(CheckLinkerFlag)
  check_linker_flag(CXX -static-pie WIVEX_STATIC_PIE)
endif()

add_library(wivex_link_flags INTERFACE)
if(NOT WIVEX_SANITIZE AND NOT WIVEX_FUZZ)
  if(NOT WIVEX_STATIC)
    target_link_options(wivex_link_flags INTERFACE -pie -Wl,--as-needed)
  elseif(WIVEX_STATIC_PIE)
    target_link_options(wivex_link_flags INTERFACE -static-pie)
  else()
    target_link_options(wivex_link_flags INTERFACE -static -no-pie)
  endif()
  if(WIVEX_STATIC)
    # libnl's name look-ups, which the tool never calls, would be warned of at every link.
    target_link_options(wivex_link_flags INTERFACE -Wl,--no-warnings)
  endif()
  target_link_options(wivex_link_flags INTERFACE
    -Wl,--gc-sections -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
