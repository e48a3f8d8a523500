# SPDX-License-Identifier: Apache-2.0
# Counts the lines and branches of src/ that run; "./dev coverage" builds with it and reports.
#
# Only the tool's own rooms count. A process that ends through _exit would keep its counters to
# itself, so that call is replaced in everything that links them.

add_library(wivex_counters OBJECT ${CMAKE_SOURCE_DIR}/tests/coverage/counters.cpp)

foreach(target common ctrl diag ops modes run)
  target_compile_options(wivex_${target} PRIVATE --coverage -fprofile-abs-path)
endforeach()
target_compile_options(wivex PRIVATE --coverage -fprofile-abs-path)
target_sources(wivex_common INTERFACE $<TARGET_OBJECTS:wivex_counters>)
target_link_options(wivex_common INTERFACE --coverage LINKER:--wrap=_exit LINKER:--wrap=main)
