# SPDX-License-Identifier: Apache-2.0
# Notes which functions of src/ and of the companion each test reaches; "./dev mutate" builds with it.

add_library(wivex_reached OBJECT ${CMAKE_SOURCE_DIR}/tests/mutate/reached.cpp)

set(wivex_noted wivex_common wivex_ctrl wivex_diag wivex_ops wivex_modes wivex_run wivex)
if(WIVEX_COMPANION)
  list(APPEND wivex_noted wivex_report_core wivex-report)
  target_sources(wivex_report_core INTERFACE $<TARGET_OBJECTS:wivex_reached>)
endif()
foreach(target ${wivex_noted})
  target_compile_options(${target} PRIVATE
    -finstrument-functions -finstrument-functions-exclude-file-list=/usr/)
endforeach()
target_sources(wivex_common INTERFACE $<TARGET_OBJECTS:wivex_reached>)
