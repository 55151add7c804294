include(CMakePackageConfigHelpers)

install(TARGETS harmony EXPORT harmonyTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/harmony DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/harmony)
install(EXPORT harmonyTargets NAMESPACE harmony:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/harmony)

set(HARMONY_INSTALL_DATADIR ${CMAKE_INSTALL_DATADIR}/harmony)
configure_package_config_file(cmake/harmonyConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/harmonyConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/harmony
  PATH_VARS HARMONY_INSTALL_DATADIR)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/harmonyConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/harmonyConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/harmonyConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/harmony)

# pkg-config's prefix is found from the file's own place, so the install can move; a static
# link needs the private libraries as well (pkg-config --static).
file(RELATIVE_PATH HARMONY_PC_PREFIX_FROM_PCDIR ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
     ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" HARMONY_PC_PREFIX_FROM_PCDIR "${HARMONY_PC_PREFIX_FROM_PCDIR}")
set(HARMONY_PC_DL "")
if(CMAKE_DL_LIBS)
  set(HARMONY_PC_DL "-l${CMAKE_DL_LIBS}")
endif()
configure_file(cmake/harmony.pc.in ${CMAKE_CURRENT_BINARY_DIR}/harmony.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/harmony.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
