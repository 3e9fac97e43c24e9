# What `cmake --install` gives, and the Debian package that CPack makes of it.
include(CMakePackageConfigHelpers)

install(TARGETS zentaro zentaro_static EXPORT ZentaroTargets)
install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zentaro FILES_MATCHING PATTERN "*.h"
        PATTERN posix EXCLUDE PATTERN windows EXCLUDE)
install(EXPORT ZentaroTargets NAMESPACE Zentaro:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zentaro)
configure_package_config_file(cmake/ZentaroConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zentaro)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zentaro)
configure_file(cmake/zentaro.pc.in ${CMAKE_CURRENT_BINARY_DIR}/zentaro.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/zentaro.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(GLOB pages ${CMAKE_CURRENT_SOURCE_DIR}/docs/man/*.1)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "Zentaro maintainers <maintainers@zentaro.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Drives a fiscal printer over a serial line, with a virtual printer to test against")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
