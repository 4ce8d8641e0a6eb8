# What `cmake --install` puts where: component `programs` for those who use the system, `sdk` for those who build on it.

include(CMakePackageConfigHelpers)

install(TARGETS ura_event ura_listen ura_send RUNTIME COMPONENT programs)
install(FILES man/ura_event.1 man/ura_listen.1 man/ura_send.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT programs)
install(FILES completions/ura_event completions/ura_listen completions/ura_send
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT programs)
install(DIRECTORY packaging/examples DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/ura-event" COMPONENT programs)

# The headers include each other by bare name: they need a folder of their own.
install(TARGETS vlib dro tavon_sdk EXPORT uraTargets
  ARCHIVE COMPONENT sdk
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ura" COMPONENT sdk
  FILE_SET generated DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/ura" COMPONENT sdk)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/ura")
install(EXPORT uraTargets NAMESPACE ura:: DESTINATION "${package_folder}" COMPONENT sdk)
configure_package_config_file(cmake/uraConfig.cmake.in "${CMAKE_CURRENT_BINARY_DIR}/uraConfig.cmake"
  INSTALL_DESTINATION "${package_folder}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${CMAKE_CURRENT_BINARY_DIR}/uraConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/uraConfig.cmake" "${CMAKE_CURRENT_BINARY_DIR}/uraConfigVersion.cmake"
        DESTINATION "${package_folder}" COMPONENT sdk)

# Paths start at the folder of ura.pc, so that an installed tree may be moved. It names no standard of C++: behind a
# program's own -std, it would win.
set(pkgconfig_folder "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
file(RELATIVE_PATH prefix_from_pc "${pkgconfig_folder}" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
file(RELATIVE_PATH libdir_from_prefix "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
file(RELATIVE_PATH includedir_from_prefix "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}/ura")
get_target_property(public_definitions vlib INTERFACE_COMPILE_DEFINITIONS)
set(pc_definitions "")
if(public_definitions)
  list(TRANSFORM public_definitions PREPEND " -D" OUTPUT_VARIABLE pc_definitions)
  list(JOIN pc_definitions "" pc_definitions)
endif()
configure_file(cmake/ura.pc.in "${CMAKE_CURRENT_BINARY_DIR}/ura.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/ura.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT sdk)

# What somebody reads who starts with the SDK.
set(sdk_documents "${CMAKE_INSTALL_DATADIR}/doc/ura-sdk-dev")
install(FILES docs/sdk.md DESTINATION "${sdk_documents}" COMPONENT sdk)
foreach(example house scene new_parameter)
  install(DIRECTORY examples/${example} DESTINATION "${sdk_documents}/examples" COMPONENT sdk)
endforeach()
if(EXISTS "${reference}/index.html")
  install(FILES packaging/doc-base DESTINATION "${CMAKE_INSTALL_DATADIR}/doc-base" RENAME ura-sdk-doc.ura-sdk COMPONENT doc)
endif()
