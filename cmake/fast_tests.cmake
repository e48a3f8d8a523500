# SPDX-License-Identifier: Apache-2.0
# With WIVEX_FAST_TESTS the compiler takes less pains with what is built to be tested and runs for moments.
# wivex_fast_folder(): so it does with all targets of this folder and of those below it. The tool and what
# else runs on the device are built as they are shipped. The build that changes sources one by one takes the
# least pains with all of them.
# wivex_fast_tests(TARGET): so it does with this test program, and the headers of the test framework are
# compiled once for all of them. The files still include what they use; other builds do without. A compiler
# that is launched through a cache includes the headers each time: the cache would not know such files
# again.

option(WIVEX_FAST_TESTS "Compile the tests quickly, and the headers of their framework once" OFF)

macro(wivex_fast_folder)
  if(WIVEX_FAST_TESTS AND NOT WIVEX_MUTANTS)
    add_compile_options(-Og)
  endif()
endmacro()

function(wivex_fast_tests target)
  if(WIVEX_FAST_TESTS)
    target_compile_options(${target} PRIVATE -Og)
  endif()
  if(TARGET wivex_test_framework)
    target_precompile_headers(${target} REUSE_FROM wivex_test_framework)
  endif()
endfunction()

if(WIVEX_FAST_TESTS AND WIVEX_TESTS AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_package(GTest REQUIRED)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/test_framework.cpp CONTENT "")
  add_library(wivex_test_framework OBJECT ${CMAKE_BINARY_DIR}/test_framework.cpp)
  target_link_libraries(wivex_test_framework PRIVATE wivex_flags GTest::gmock)
  target_compile_options(wivex_test_framework PRIVATE -Og)
  target_precompile_headers(wivex_test_framework PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
endif()
