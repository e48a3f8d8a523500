# SPDX-License-Identifier: Apache-2.0
# wivex_together(TARGET FOLDER... [EXCEPT NAME...]): with WIVEX_TOGETHER the sources of each folder are
# compiled some at a time as one, except those of these names: that way the headers of the libraries,
# which cost more than our own code, are read once for all of them. So private names differ within a
# folder, or stand in a file of the exceptions. Each file still includes what it uses: clang-tidy reads
# them one by one. A compiler that is launched through a cache gets them one by one, too.

option(WIVEX_TOGETHER "Compile sources some at a time as one" OFF)

function(wivex_together target)
  if(NOT WIVEX_TOGETHER OR CMAKE_CXX_COMPILER_LAUNCHER)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 apart "" "" EXCEPT)
  list(JOIN apart_EXCEPT "|" names)
  set(at_once 12)
  foreach(folder ${apart_UNPARSED_ARGUMENTS})
    get_target_property(sources ${target} SOURCES)
    list(TRANSFORM sources PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ REGEX "^[^/]")
    list(FILTER sources INCLUDE REGEX "/${folder}/[^/]+[.]cpp$")
    if(names)
      list(FILTER sources EXCLUDE REGEX "/(${names})[.]cpp$")
    endif()
    set(place 0)
    foreach(source ${sources})
      math(EXPR group "${place} / ${at_once}")
      math(EXPR place "${place} + 1")
      set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder}_${group})
    endforeach()
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
