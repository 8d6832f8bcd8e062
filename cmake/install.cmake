# SPDX-License-Identifier: Apache-2.0
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Zantrel)

install(TARGETS zantrel zantrel_editing EXPORT ZantrelTargets)
install(FILES ${windows_runtime} DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/zantrel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(DIRECTORY schemas DESTINATION ${CMAKE_INSTALL_DATADIR}/zantrel)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The package depends on no other.
install(EXPORT ZantrelTargets NAMESPACE Zantrel:: DESTINATION ${package_folder})
configure_package_config_file(cmake/package_config.cmake.in ZantrelConfig.cmake
  INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(ZantrelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZantrelConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/ZantrelConfigVersion.cmake
  DESTINATION ${package_folder})

include(cmake/sbom.cmake)
