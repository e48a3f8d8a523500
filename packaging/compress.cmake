# SPDX-License-Identifier: Apache-2.0
# Runs over the folder that becomes a package: Debian wants manual pages and changelogs compressed, and
# without a time stamp, so that equal contents are equal files.
find_program(GZIP gzip REQUIRED)
file(GLOB_RECURSE files
  ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/man/man*/*
  ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*/usr/share/doc/*/changelog)
foreach(file IN LISTS files)
  execute_process(COMMAND ${GZIP} -9 -n -f ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
