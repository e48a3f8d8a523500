# SPDX-License-Identifier: Apache-2.0
# wivex_fast_tests(TARGET): with WIVEX_FAST_TESTS the test framework's headers are compiled once for all
# files of the target. The files still include what they use; other builds do without. A compiler that
# is launched through a cache does without too: the cache would not know such files again.

option(WIVEX_FAST_TESTS "Compile the headers of the test framework once" OFF)

function(wivex_fast_tests target)
  if(WIVEX_FAST_TESTS AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    target_precompile_headers(${target} PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  endif()
endfunction()
