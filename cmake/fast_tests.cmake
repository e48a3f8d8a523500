# SPDX-License-Identifier: Apache-2.0
# wivex_fast_tests(TARGET): with WIVEX_FAST_TESTS the compiler takes less pains with this test program,
# which runs for moments, and the headers of the test framework are compiled once for all of them. The
# files still include what they use; other builds do without. A compiler that is launched through a cache
# includes the headers each time: the cache would not know such files again.

option(WIVEX_FAST_TESTS "Compile the tests quickly, and the headers of their framework once" OFF)

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
