# What `cmake --install` gives: libraries, the headers that programs need, CMake and pkg-config files, pages. The Debian
# packages are made of it (debian/).
include(CMakePackageConfigHelpers)

# Installs a public header and those that it includes, directly or not. They lie below the root of the tree, or below src.
function(install_headers first)
  set(found)
  set(open ${first})
  while(open)
    list(POP_FRONT open header)
    list(APPEND found ${header})
    set(file ${PROJECT_SOURCE_DIR}/${header})
    if(NOT EXISTS ${file})
      set(file ${PROJECT_SOURCE_DIR}/src/${header})
    endif()
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zentaro/${folder})
    file(STRINGS ${file} lines REGEX "^#include \"")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE "^#include \"([^\"]*)\".*" "\\1" included "${line}")
      if(NOT included IN_LIST found AND NOT included IN_LIST open)
        list(APPEND open ${included})
      endif()
    endforeach()
  endwhile()
endfunction()

install(TARGETS zentaro zentaro_static zentaro_till EXPORT ZentaroTargets)
install_headers(zentaro.h)
install_headers(till/zentaro_till.h)
install(EXPORT ZentaroTargets NAMESPACE Zentaro:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zentaro)
configure_package_config_file(cmake/ZentaroConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zentaro)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/ZentaroConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/Zentaro)

# The prefix is told from where they lie, so that it is true wherever the tree is put.
set(pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${pkgconfig} /prefix)
string(REGEX REPLACE "/$" "" prefix_from_pkgconfig "${prefix_from_pkgconfig}")
foreach(name zentaro zentaro-till)
  configure_file(cmake/${name}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc DESTINATION ${pkgconfig})
endforeach()

install(DIRECTORY docs/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1" PATTERN es EXCLUDE)
install(DIRECTORY docs/man/es/ DESTINATION ${CMAKE_INSTALL_MANDIR}/es/man1 FILES_MATCHING PATTERN "*.1")
# As they lie in the source tree, so that the pages find each other and the examples.
install(FILES LICENSE README.md LEEME.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs PATTERN man EXCLUDE)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples PATTERN .clang-tidy EXCLUDE)
install(FILES service/http/openapi.json DESTINATION ${CMAKE_INSTALL_DOCDIR}/service/http)
