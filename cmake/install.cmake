# SPDX-License-Identifier: Apache-2.0
# What goes where, in GNU's folders, for a package of any kind. The component "tool" is wivex and
# wivex-doctor, the component "companion" is wivex-report, the component "line" is wivex-line.

include(GNUInstallDirs)

# The tool reads /lib/modules/wifi and nowhere else. The files there are edited on the device or by its
# production line, so they are installed only on request; who asks makes sure that an upgrade keeps them.
set(WIVEX_CONFIG_DIR "" CACHE STRING "Install the configuration files to this folder as well")

set(wivex_configurations examples/wivex.cfg examples/wivex_qca.cfg examples/wivex_softap.cfg)

install(TARGETS wivex wivex-doctor RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
install(FILES docs/man/wivex.1 docs/man/wivex-doctor.1
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
install(FILES docs/man/wivex.cfg.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5 COMPONENT tool)
install(FILES packaging/wivex.bash-completion RENAME wivex
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
install(FILES packaging/wivex-doctor.bash-completion RENAME wivex-doctor
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
install(FILES docs/failure-codes.md docs/scan.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex COMPONENT tool)
install(FILES ${wivex_configurations}
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex/examples COMPONENT tool)
install(PROGRAMS examples/shielded-room
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex/examples COMPONENT tool)
if(WIVEX_CONFIG_DIR)
  install(FILES ${wivex_configurations} DESTINATION ${WIVEX_CONFIG_DIR} COMPONENT tool)
endif()

if(WIVEX_COMPANION)
  install(TARGETS wivex-report RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT companion)
  install(FILES companion/wivex-report.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT companion)
  install(FILES packaging/wivex-report.bash-completion RENAME wivex-report
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT companion)
  install(FILES docs/report-json.md docs/from-barcode-to-result.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex-report COMPONENT companion)
  install(PROGRAMS examples/reported-run examples/barcode-to-result examples/serial-run
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex-report/examples COMPONENT companion)
endif()

if(WIVEX_LINE AND WIVEX_COMPANION)
  install(TARGETS wivex-line RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT line)
  install(FILES line/wivex-line.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT line)
  install(FILES packaging/wivex-line.bash-completion RENAME wivex-line
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT line)
  install(FILES docs/line.md docs/line-schema.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex-line COMPONENT line)
endif()

# Debian has the text of the licence once for all packages.
if(NOT WIVEX_PACKAGE)
  install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex COMPONENT tool)
  if(WIVEX_COMPANION)
    install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wivex-report COMPONENT companion)
  endif()
endif()
