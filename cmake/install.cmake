# Installation, the Debian package and the tests of both.
#
# qendor finds its stylesheets in its own directory, which it derives from the
# path it was started by: everything before the first "qendor" in that path.
# So the program and the stylesheets are installed together into one
# directory whose path holds no "qendor" (<prefix>/libexec/qreport by
# default), and <prefix>/bin/qendor is a small launcher that starts the
# program there by its absolute path. Typed from any directory, `qendor ...`
# then finds the stylesheets.
#
#   cmake --install build [--prefix /usr/local]    (DESTDIR is honoured)
#   cd build && cpack -G DEB                         (qendor_<version>_<arch>.deb)

include(GNUInstallDirs)

set(QENDOR_PROGRAM_DIR "${CMAKE_INSTALL_LIBEXECDIR}/qreport"
    CACHE STRING "Directory below the install prefix for the program and its stylesheets")
if(IS_ABSOLUTE "${QENDOR_PROGRAM_DIR}" OR QENDOR_PROGRAM_DIR MATCHES "qendor")
  message(FATAL_ERROR
    "QENDOR_PROGRAM_DIR (${QENDOR_PROGRAM_DIR}) must be a relative path without \"qendor\" "
    "in it: the program looks for its stylesheets before the first \"qendor\" in its path.")
endif()
if(CMAKE_INSTALL_PREFIX MATCHES "qendor")
  message(WARNING
    "CMAKE_INSTALL_PREFIX (${CMAKE_INSTALL_PREFIX}) contains \"qendor\": an installed "
    "qendor would not find its stylesheets there, so installing into it is refused.")
endif()

# The launcher reaches the program directory relative to its own directory.
file(RELATIVE_PATH QENDOR_LAUNCHER_TO_PROGRAM "/${CMAKE_INSTALL_BINDIR}" "/${QENDOR_PROGRAM_DIR}")
configure_file(${PROJECT_SOURCE_DIR}/packaging/qendor.sh.in
               ${PROJECT_BINARY_DIR}/launcher/qendor @ONLY)

# The man page, compressed as Debian keeps man pages.
set(QENDOR_MAN_PAGE ${PROJECT_BINARY_DIR}/man/qendor.1.gz)
add_custom_command(OUTPUT ${QENDOR_MAN_PAGE}
                   COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/man
                   COMMAND sh -c "gzip -9 -n -c \"$0\" > \"$1\""
                           ${PROJECT_SOURCE_DIR}/man/qendor.1 ${QENDOR_MAN_PAGE}
                   DEPENDS ${PROJECT_SOURCE_DIR}/man/qendor.1
                   COMMENT "Compressing the man page"
                   VERBATIM)
add_custom_target(qendor_man_page ALL DEPENDS ${QENDOR_MAN_PAGE})

# Refuse an install prefix in which the program could not find its
# stylesheets. This runs first, at install time, so that `--prefix` given to
# `cmake --install` is checked too; DESTDIR only stages the files and is not
# part of the path the program runs from.
install(CODE [[
  if(CMAKE_INSTALL_PREFIX MATCHES "qendor")
    message(FATAL_ERROR
      "Install prefix ${CMAKE_INSTALL_PREFIX} contains \"qendor\": the installed program "
      "looks for its stylesheets before the first \"qendor\" in its path and would not "
      "find them. Choose another prefix.")
  endif()
]])

install(TARGETS qendor RUNTIME DESTINATION ${QENDOR_PROGRAM_DIR})
file(GLOB QENDOR_INSTALLED_STYLESHEETS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/stylesheets/*.xslt)
install(FILES ${QENDOR_INSTALLED_STYLESHEETS} DESTINATION ${QENDOR_PROGRAM_DIR})
install(PROGRAMS ${PROJECT_BINARY_DIR}/launcher/qendor DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${QENDOR_MAN_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/docs/formats.md
              ${PROJECT_SOURCE_DIR}/schema/TestResult.xsd
        DESTINATION ${CMAKE_INSTALL_DOCDIR})

# Debian package. The package installs below /usr; CPack stages it through
# DESTDIR so that the install prefix seen by the rules above is /usr itself.
set(QENDOR_PACKAGE_MAINTAINER "qendor developers <qendor@localhost>"
    CACHE STRING "Maintainer field of the Debian package")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qendor)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "report generator for model-based test runs")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "qendor reads the execution log of a test run together with an info file,
checks each test case against its sequence diagram, statechart or
flowchart, and writes one XML result document and one HTML report per
test case and test context. Its exit status is the verdict.")
set(CPACK_PACKAGE_CONTACT "${QENDOR_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${QENDOR_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# dpkg-shlibdeps adds the libraries the program links (libxml2, libc, the C++
# runtime); xsltproc is started as a command and is declared by hand.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "xsltproc")
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CHECKSUM SHA256)
include(CPack)

if(QENDOR_TESTS)
  # Every result document the program writes for the example and the
  # end-to-end scenarios validates against the schema.
  add_test(NAME schema
           COMMAND sh ${PROJECT_SOURCE_DIR}/tests/schema_test.sh ${PROJECT_SOURCE_DIR}
                   $<TARGET_FILE:qendor>)
  # Installed into a temporary prefix, the launcher runs the example by bare
  # name from another directory; the man page renders without warnings.
  add_test(NAME install
           COMMAND sh ${PROJECT_SOURCE_DIR}/tests/install_test.sh ${PROJECT_BINARY_DIR}
                   ${PROJECT_SOURCE_DIR})
  set_tests_properties(schema install PROPERTIES ENVIRONMENT "TZ=UTC;LC_ALL=C;LANG=C")
  set_tests_properties(schema PROPERTIES SKIP_RETURN_CODE 77)
endif()
