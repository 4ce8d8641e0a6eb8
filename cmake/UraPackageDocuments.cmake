# Run by CPack on the tree of each package before it is packed: adds what every Debian package carries and compresses
# its texts as Debian wants them, without a time or name inside so that a package can be made again bit for bit.

find_program(GZIP gzip REQUIRED)

unset(ENV{DESTDIR})  # of the component that CPack installed last
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} component_upper)
  set(tree "${CPACK_TEMPORARY_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}")
  set(package "${CPACK_DEBIAN_${component_upper}_PACKAGE_NAME}")
  set(documents "${tree}/share/doc/${package}")
  foreach(file copyright changelog)
    configure_file("${CPACK_URA_SOURCE_FOLDER}/packaging/${file}" "${documents}/${file}" @ONLY)
  endforeach()
  configure_file("${CPACK_URA_SOURCE_FOLDER}/packaging/lintian-overrides"
                 "${tree}/share/lintian/overrides/${package}" @ONLY)
  # A package is not moved, so its paths may be plain ones.
  file(GLOB_RECURSE pkgconfig_file "${tree}/lib/ura.pc")
  if(pkgconfig_file)
    file(READ "${pkgconfig_file}" text)
    string(REGEX REPLACE "^prefix=[^\n]*" "prefix=${CPACK_PACKAGING_INSTALL_PREFIX}" text "${text}")
    file(WRITE "${pkgconfig_file}" "${text}")
  endif()
  file(GLOB manual_pages "${tree}/share/man/man1/*.1")
  execute_process(COMMAND "${GZIP}" -9nf "${documents}/changelog" ${manual_pages} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
