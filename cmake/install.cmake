# SPDX-License-Identifier: Apache-2.0
# What is installed, in components: Runtime, Development, Tools (cmake/tools.cmake) and Documentation.
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Zantrel)

set(installed_libraries zantrel zantrel_editing)
if(ZANTREL_BUILD_BOTH_KINDS)
  list(APPEND installed_libraries zantrel_${other_name} zantrel_editing_${other_name})
endif()
install(TARGETS ${installed_libraries} EXPORT ZantrelTargets
  RUNTIME COMPONENT Runtime
  LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE COMPONENT Development)
install(FILES ${windows_runtime} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
install(DIRECTORY include/zantrel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT Development FILES_MATCHING PATTERN "*.h")
install(DIRECTORY schemas DESTINATION ${CMAKE_INSTALL_DATADIR}/zantrel COMPONENT Development)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation)
install(FILES LICENSE README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation)

# The package for CMake depends on no other. It stands in the build folder, too: -DZantrel_DIR=<that> finds what was built
# and not installed.
install(EXPORT ZantrelTargets NAMESPACE Zantrel:: DESTINATION ${package_folder} COMPONENT Development)
export(EXPORT ZantrelTargets NAMESPACE Zantrel:: FILE ${CMAKE_CURRENT_BINARY_DIR}/ZantrelTargets.cmake)
if(TARGET paramtool)
  install(EXPORT ZantrelTools NAMESPACE Zantrel:: DESTINATION ${package_folder} COMPONENT Tools)
  export(EXPORT ZantrelTools NAMESPACE Zantrel:: FILE ${CMAKE_CURRENT_BINARY_DIR}/ZantrelTools.cmake)
endif()
configure_package_config_file(cmake/package_config.cmake.in ZantrelConfig.cmake
  INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(ZantrelConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZantrelConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/ZantrelConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT Development)

# For pkg-config, by places beside its files, so that what was installed can be moved.
set(pc_prefix ${CMAKE_INSTALL_PREFIX})
if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
foreach(folder libdir includedir)
  string(TOUPPER ${folder} variable)
  set(pc_${folder} ${CMAKE_INSTALL_${variable}})
  if(NOT IS_ABSOLUTE "${pc_${folder}}")
    set(pc_${folder} "\${prefix}/${pc_${folder}}")
  endif()
endforeach()
function(install_pc name target description requires macro)
  set(flags "")
  set(static_flags -D${macro}) # where both kinds were built, for pkg-config --static
  if(default_kind STREQUAL STATIC)
    set(flags "-D${macro} ")
  endif()
  configure_file(cmake/package.pc.in ${name}.pc.in @ONLY)
  set(pc ${CMAKE_CURRENT_BINARY_DIR}/pkgconfig/$<CONFIG>/${name}.pc)
  file(GENERATE OUTPUT ${pc} INPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc.in)
  install(FILES ${pc} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endfunction()
install_pc(zantrel zantrel "${PROJECT_DESCRIPTION}" "" ZANTREL_STATIC)
install_pc(zantrel-editing zantrel_editing "Validation, differences and migration of parameters" "zantrel = ${PROJECT_VERSION}"
  ZANTREL_EDITING_STATIC)

include(cmake/sbom.cmake)
include(cmake/packages.cmake)
