# Flags of every target, and what the shipped binary adds to them.

add_library(wivex_flags INTERFACE)
target_compile_options(wivex_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 -Werror)
target_compile_definitions(wivex_flags INTERFACE _FILE_OFFSET_BITS=64)

if(WIVEX_FUZZ)
  target_compile_options(wivex_flags INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -O1 -g)
  target_link_options(wivex_flags INTERFACE -fsanitize=address,undefined)
elseif(WIVEX_SANITIZE)
  target_compile_options(wivex_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  target_link_options(wivex_flags INTERFACE -fsanitize=address,undefined)
else()
  target_compile_options(wivex_flags INTERFACE
    $<IF:$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>,-fPIC,-fPIE>
    -ffunction-sections -fdata-sections -fstack-protector-strong -U_FORTIFY_SOURCE
    -D_FORTIFY_SOURCE=2)
endif()

add_library(wivex_link_flags INTERFACE)
if(NOT WIVEX_SANITIZE AND NOT WIVEX_FUZZ)
  target_link_options(wivex_link_flags INTERFACE
    -pie -Wl,--gc-sections -Wl,--as-needed -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
