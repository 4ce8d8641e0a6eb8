# Debian packages by CPack, one for each component; scripts/package makes and checks them.

file(STRINGS packaging/changelog newest_change LIMIT_COUNT 1)
if(NOT newest_change MATCHES "^ura \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "packaging/changelog begins with \"${newest_change}\": add an entry for ${PROJECT_VERSION}")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ura)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package begins its description with a summary of its own
set(CPACK_URA_ADDRESS ura@localhost)  # where bugs are reported; nothing else holds it
set(CPACK_PACKAGE_CONTACT "The Ura project <${CPACK_URA_ADDRESS}>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL programs sdk)
set(reference "${CMAKE_CURRENT_SOURCE_DIR}/build/docs/html")
if(EXISTS "${reference}/index.html")  # scripts/docs has made it
  install(DIRECTORY "${reference}" DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/ura-sdk-doc" COMPONENT doc)
  list(APPEND CPACK_COMPONENTS_ALL doc)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/cmake/UraPackageDocuments.cmake")
set(CPACK_URA_SOURCE_FOLDER "${CMAKE_CURRENT_SOURCE_DIR}")
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE "${URA_ARCHITECTURE}")  # empty: this machine's own

set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME ura-event)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SECTION utils)
# Said here, because dpkg-shlibdeps finds no libraries of other architectures. tests/install/check_package compares it
# with what the programs need.
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_DEPENDS "libc6 (>= 2.35)")
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_RECOMMENDS netbase)  # for localhost in /etc/hosts
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SUGGESTS bash-completion)
set(CPACK_COMPONENT_PROGRAMS_DESCRIPTION "event dispatcher of the Ura home-automation server
ura_event sets one parameter of an Ura server on the same machine (a switch, a
slider, a colour, a shutter, a thermostat, a schedule, a scene) by sending it
one datagram. Scripts and timers run it once for each event.

ura_send sends one event or thousands, checked, and no faster than the server
reads. ura_listen shows the events that arrive while no server is running.

The server is a program of its own and not in this package. The example house
in the package ura-sdk-dev is one to start from.")

set(CPACK_DEBIAN_SDK_PACKAGE_NAME ura-sdk-dev)
# The SDKs of several architectures may be installed together. CPack has no name for that field before 3.31, so it
# follows the section's on a line of its own.
set(CPACK_DEBIAN_SDK_PACKAGE_SECTION "libdevel\nMulti-Arch: same")
set(CPACK_DEBIAN_SDK_PACKAGE_DEPENDS "libc6-dev, libstdc++-12-dev | libstdc++-dev")
set(CPACK_DEBIAN_SDK_PACKAGE_SUGGESTS "cmake, libutfcpp-dev, pkgconf, ura-sdk-doc")
set(CPACK_COMPONENT_SDK_DESCRIPTION "SDK of the Ura home-automation server
Headers and static libraries (C++20) for programs that work with an Ura
server: the parameter model with its types and scenes, error logs, and the
libraries for the operating system and for threads beneath them.

Programs find it with find_package(ura) in CMake or with pkg-config ura.")

set(CPACK_DEBIAN_DOC_PACKAGE_NAME ura-sdk-doc)
set(CPACK_DEBIAN_DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_COMPONENT_DOC_DESCRIPTION "reference of the SDK of the Ura home-automation server
The guide to the SDK, all its classes and functions, and the examples, as HTML:
/usr/share/doc/ura-sdk-doc/html/index.html")

include(CPack)
