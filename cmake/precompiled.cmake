# SPDX-License-Identifier: Apache-2.0
# With WIVEX_FAST_TESTS the headers of libraries are compiled once for many sources: reading them takes
# longer than our own code. The files still include what they use; other builds do without. A compiler that
# is launched through a cache includes the headers each time: the cache would not know such files again.
# wivex_precompile(SET HEADER... [LIBRARIES LIBRARY...]): what a set holds, and what its targets link beside
# the flags of every target.
# wivex_precompiled(SET TARGET...): these targets use it.

function(wivex_precompile set)
  if(NOT WIVEX_FAST_TESTS OR CMAKE_CXX_COMPILER_LAUNCHER)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 of_set "" "" LIBRARIES)
  set(source ${CMAKE_BINARY_DIR}/headers_${set}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(wivex_headers_${set} OBJECT ${source})
  target_link_libraries(wivex_headers_${set} PRIVATE wivex_flags ${of_set_LIBRARIES})
  list(TRANSFORM of_set_UNPARSED_ARGUMENTS REPLACE "(.+)" "<\\1>" OUTPUT_VARIABLE headers)
  target_precompile_headers(wivex_headers_${set} PRIVATE ${headers})
endfunction()

function(wivex_precompiled set)
  if(TARGET wivex_headers_${set})
    foreach(target ${ARGN})
      target_precompile_headers(${target} REUSE_FROM wivex_headers_${set})
    endforeach()
  endif()
endfunction()
