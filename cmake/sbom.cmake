# SPDX-License-Identifier: Apache-2.0
# The last rule of the install, since it lists what the others have installed.
set(sbom_others "")
if(TARGET paramtool)
  set(sbom_others "\"CLI11|${CLI11_VERSION}|BSD-3-Clause\" \"nlohmann_json|${nlohmann_json_VERSION}|MIT\"")
endif()
configure_file(cmake/sbom.cmake.in sbom_install.cmake @ONLY)
install(SCRIPT ${CMAKE_CURRENT_BINARY_DIR}/sbom_install.cmake)
