# SPDX-License-Identifier: Apache-2.0
# paramtool: what a person does with parameter files, on the public headers of both libraries. Unlike them it may have
# dependencies, which are headers alone and so serve any system.

# find_headers(<package> <target> <folder>): finds a package of headers of the system that builds.
function(find_headers package target folder)
  find_package(${package} QUIET NO_CMAKE_FIND_ROOT_PATH GLOBAL)
  if(${package}_FOUND AND CMAKE_CROSSCOMPILING)
    # Beside them stand the headers of the system that builds.
    get_target_property(headers ${target} INTERFACE_INCLUDE_DIRECTORIES)
    list(GET headers 0 headers) # some packages name theirs twice
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers)
    file(CREATE_LINK ${headers}/${folder} ${PROJECT_BINARY_DIR}/headers/${folder} SYMBOLIC)
    set_target_properties(${target} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${PROJECT_BINARY_DIR}/headers)
  endif()
  set(${package}_FOUND ${${package}_FOUND} PARENT_SCOPE)
  set(${package}_VERSION ${${package}_VERSION} PARENT_SCOPE)
endfunction()

find_headers(CLI11 CLI11::CLI11 CLI)
find_headers(nlohmann_json nlohmann_json::nlohmann_json nlohmann)
if(NOT CLI11_FOUND OR NOT nlohmann_json_FOUND)
  message(STATUS "There is no CLI11, or no nlohmann_json, and so no paramtool")
  return()
endif()

include(cmake/page.cmake)
file(GLOB tool_sources CONFIGURE_DEPENDS tools/paramtool/*.cpp tools/paramtool/*/*.cpp examples/common/*.cpp)
list(FILTER tool_sources EXCLUDE REGEX "/paramtool/page(_data)?\\.cpp$") # in paramtool_page
add_executable(paramtool ${tool_sources})
compile_folders_at_once(paramtool)
target_include_directories(paramtool PRIVATE ${PROJECT_SOURCE_DIR}/tools/paramtool ${PROJECT_SOURCE_DIR}/examples)
target_compile_definitions(paramtool PRIVATE "PARAMTOOL_VERSION=\"${PROJECT_VERSION}\"")
target_link_libraries(paramtool PRIVATE
  paramtool_page Zantrel::Zantrel Zantrel::Editing CLI11::CLI11 nlohmann_json::nlohmann_json zantrel_warnings
  zantrel_hardening)
set_target_properties(paramtool PROPERTIES
  CXX_STANDARD 17
  CXX_STANDARD_REQUIRED ON
  RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)

# The libraries of the system are found without; a package in any other place can be moved.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set_target_properties(paramtool PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()

if(ZANTREL_INSTALL)
  install(TARGETS paramtool EXPORT ZantrelTools RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Tools)
  install(FILES tools/paramtool/paramtool.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tools)
  set(completions tools/paramtool/completions)
  install(FILES ${completions}/paramtool DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT Tools)
  install(FILES ${completions}/_paramtool DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT Tools)
  install(FILES ${completions}/paramtool.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    COMPONENT Tools)
endif()

if(ZANTREL_BUILD_TESTS)
  add_test(NAME Tool.Paramtool
    COMMAND ${PROJECT_SOURCE_DIR}/tests/paramtool/run $<TARGET_FILE:paramtool> ${CMAKE_CROSSCOMPILING_EMULATOR})
endif()
