include(CMakePackageConfigHelpers)

install(TARGETS harmony EXPORT harmonyTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/harmony DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/harmony)
install(EXPORT harmonyTargets NAMESPACE harmony:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/harmony)

configure_package_config_file(cmake/harmonyConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/harmonyConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/harmony)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/harmonyConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/harmonyConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/harmonyConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/harmony)

configure_file(cmake/harmony.pc.in ${CMAKE_CURRENT_BINARY_DIR}/harmony.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/harmony.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
