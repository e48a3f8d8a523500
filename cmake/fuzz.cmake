# SPDX-License-Identifier: Apache-2.0
# wivex_fuzz_target(NAME LIBRARY...): the fuzz target fuzz_NAME, made of fuzz_NAME.cpp, which has to have a
# corpus of this name. "./dev fuzz" finds the names of all in the file fuzz-targets of the build.

file(WRITE ${CMAKE_BINARY_DIR}/fuzz-targets "")

function(wivex_fuzz_target name)
  if(NOT IS_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${name})
    message(FATAL_ERROR "the fuzz target ${name} has no corpus")
  endif()
  add_executable(fuzz_${name} fuzz_${name}.cpp)
  target_link_libraries(fuzz_${name} PRIVATE ${ARGN})
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  file(APPEND ${CMAKE_BINARY_DIR}/fuzz-targets "${name}\n")
endfunction()
