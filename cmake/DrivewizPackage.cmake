# Installation and packaging: the shared library, its public headers, a CMake package
# (find_package(drivewiz), target drivewiz::drivewiz) and a pkg-config file.
#
# Public headers are every header under src/ except private ones (*_p.h) and the Designer
# plugin's; they go to include/drivewiz/ with their folders, beside the C interface
# host_api.h. A host includes them as <drivewiz/paramtable/ParaTable.h>; the headers
# include each other as "paramtable/para_import.h", so include/drivewiz is on the include
# path as well.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(DRIVEWIZ_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/drivewiz" CACHE STRING
    "Where the CMake package of drivewiz is installed (relative to the prefix)")

install(TARGETS drivewiz EXPORT drivewizTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ ${PROJECT_SOURCE_DIR}/include/drivewiz/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/drivewiz
  FILES_MATCHING PATTERN "*.h"
  PATTERN "*_p.h" EXCLUDE
  PATTERN "designer" EXCLUDE
  PATTERN "forms" EXCLUDE)

install(EXPORT drivewizTargets
  NAMESPACE drivewiz::
  FILE drivewizTargets.cmake
  DESTINATION ${DRIVEWIZ_INSTALL_CMAKEDIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/drivewizConfig.cmake.in
  ${PROJECT_BINARY_DIR}/drivewizConfig.cmake
  INSTALL_DESTINATION ${DRIVEWIZ_INSTALL_CMAKEDIR})
# 0.x releases may change the interface with every minor version.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/drivewizConfigVersion.cmake
  VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/drivewizConfig.cmake
              ${PROJECT_BINARY_DIR}/drivewizConfigVersion.cmake
  DESTINATION ${DRIVEWIZ_INSTALL_CMAKEDIR})

# The pkg-config file finds its prefix from where it lies, so that an installation moved
# with `cmake --install --prefix` still works.
file(RELATIVE_PATH DRIVEWIZ_PC_TO_PREFIX
  "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
string(REGEX REPLACE "/$" "" DRIVEWIZ_PC_TO_PREFIX "${DRIVEWIZ_PC_TO_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/drivewiz.pc.in
  ${PROJECT_BINARY_DIR}/drivewiz.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/drivewiz.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
