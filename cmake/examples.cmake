# SPDX-License-Identifier: Apache-2.0
# Each folder of examples/ that holds sources is one host, named after the folder; common/ holds what they share.
# Hosts see public headers only.
file(GLOB example_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*/*.cpp)
set(common_sources ${example_sources})
list(FILTER common_sources INCLUDE REGEX "/examples/common/")
list(FILTER example_sources EXCLUDE REGEX "/examples/common/")

find_package(CLI11 QUIET) # the arguments of paramtool
if(NOT CLI11_FOUND)
  message(STATUS "There is no CLI11, and so no paramtool")
  list(FILTER example_sources EXCLUDE REGEX "/examples/paramtool/")
endif()

foreach(source IN LISTS example_sources)
  get_filename_component(folder ${source} DIRECTORY)
  get_filename_component(name ${folder} NAME)
  if(NOT TARGET ${name})
    add_executable(${name} ${common_sources})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/examples)
    target_link_libraries(${name} PRIVATE Zantrel::Zantrel zantrel_warnings)
    set_target_properties(${name} PROPERTIES
      CXX_STANDARD 17
      CXX_STANDARD_REQUIRED ON
      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
  endif()
  target_sources(${name} PRIVATE ${source})
endforeach()

if(TARGET paramtool)
  target_link_libraries(paramtool PRIVATE CLI11::CLI11)
  if(ZANTREL_BUILD_TESTS AND UNIX)
    add_test(NAME Paramtool COMMAND ${PROJECT_SOURCE_DIR}/tests/paramtool/run $<TARGET_FILE:paramtool>)
  endif()
endif()
