# SPDX-License-Identifier: Apache-2.0
# With WIVEX_FAST_TESTS the compiler takes less pains with what is built to be tested and runs for moments.
# wivex_fast_folder(): so it does with all targets of this folder and of those below it. The tool and what
# else runs on the device are built as they are shipped. The build that changes sources one by one takes the
# least pains with all of them.
# wivex_fast_tests(TARGET): so it does with this test program, and the headers of the test framework are
# compiled once for all of them.

option(WIVEX_FAST_TESTS "Compile the tests quickly, and the headers of libraries once" OFF)
include(cmake/precompiled.cmake)

macro(wivex_fast_folder)
  if(WIVEX_FAST_TESTS AND NOT WIVEX_MUTANTS)
    add_compile_options(-Og)
  endif()
endmacro()

# Behind the flags of every target. Nobody ships or attacks a test program.
add_library(wivex_fast_test_flags INTERFACE)
if(WIVEX_FAST_TESTS)
  target_compile_options(wivex_fast_test_flags INTERFACE
    -Og -fno-function-sections -fno-data-sections -fno-stack-protector)
endif()

function(wivex_fast_tests target)
  target_link_libraries(${target} PRIVATE wivex_fast_test_flags)
  wivex_precompiled(test_framework ${target})
endfunction()

wivex_precompile(as_shipped algorithm array cerrno charconv cmath cstdint cstdio cstdlib cstring functional
  map memory optional span string string_view utility vector)
if(WIVEX_TESTS)
  find_package(GTest REQUIRED)
  wivex_precompile(test_framework gmock/gmock.h gtest/gtest.h LIBRARIES GTest::gmock wivex_fast_test_flags)
endif()
