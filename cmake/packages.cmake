# SPDX-License-Identifier: Apache-2.0
# Debian packages, one a component, named after Debian's custom: script/package builds them. The source archive is
# script/release's, which has git say what belongs to it.
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zantrel)
set(CPACK_PACKAGE_VENDOR "The Zantrel authors")
set(CPACK_PACKAGE_CONTACT "The Zantrel authors <authors@zantrel.example>" CACHE STRING "Who answers for the packages")
set(CPACK_COMPONENTS_ALL Runtime Development Tools Documentation)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
set(CPACK_COMPONENT_TOOLS_DEPENDS Runtime)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# describe(<component> <package> <section> <synopsis> <text>)
macro(describe component package section synopsis text)
  set(CPACK_DEBIAN_${component}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${component}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${component}_DESCRIPTION "${synopsis}
Zantrel declares the parameters of build processors of additive manufacturing,
holds their values and keeps both in XML files.
.
${text}")
endmacro()
describe(RUNTIME libzantrel${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR} libs
  "parameters of build processors: shared libraries" "This package holds the libraries that programs load.")
describe(DEVELOPMENT libzantrel-dev libdevel
  "parameters of build processors: development files"
  "This package holds the headers, the static libraries, the schemas and what
CMake and pkg-config need.")
describe(TOOLS zantrel-tools utils
  "parameters of build processors: paramtool"
  "This package holds paramtool, which shows, checks, changes and compares
parameter files and layouts.")
describe(DOCUMENTATION zantrel-doc doc
  "parameters of build processors: documentation" "This package holds the documents.")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# Beside the calls of ldconfig that CPack writes by itself, of which lintian only warns.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian_files.cmake)
set(CPACK_ZANTREL_COPYRIGHT ${PROJECT_SOURCE_DIR}/.reuse/dep5)
include(CPack)
