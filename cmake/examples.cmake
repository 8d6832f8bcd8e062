# SPDX-License-Identifier: Apache-2.0
# Each folder of examples/ that holds sources is one host, named after the folder; common/ holds what they share.
# Hosts see public headers only.
file(GLOB example_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*/*.cpp)
set(common_sources ${example_sources})
list(FILTER common_sources INCLUDE REGEX "/examples/common/")
list(FILTER example_sources EXCLUDE REGEX "/examples/common/")

# The arguments of paramtool; headers alone, which serve any system.
find_package(CLI11 QUIET NO_CMAKE_FIND_ROOT_PATH)
if(CLI11_FOUND AND CMAKE_CROSSCOMPILING)
  # Beside them stand the headers of the system that builds.
  get_target_property(headers CLI11::CLI11 INTERFACE_INCLUDE_DIRECTORIES)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers)
  file(CREATE_LINK ${headers}/CLI ${PROJECT_BINARY_DIR}/headers/CLI SYMBOLIC)
  set_target_properties(CLI11::CLI11 PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${PROJECT_BINARY_DIR}/headers)
elseif(NOT CLI11_FOUND)
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
endif()

# Hosts end with 0 when all that they check holds. They use the library as its users do, with what it exports.
if(ZANTREL_BUILD_TESTS)
  set(data ${PROJECT_SOURCE_DIR}/examples/data)
  set(results ${PROJECT_BINARY_DIR}/results)
  file(MAKE_DIRECTORY ${results})
  add_test(NAME Host.RoundTrip COMMAND round_trip ${data}/machine_parameters.xml ${results}/round_trip.xml)
  add_test(NAME Host.LayoutFromFile COMMAND layout_from_file ${data}/powder_bed_machine.xml ${results}/machine_ü)
  add_test(NAME Host.BuildTicket COMMAND build_ticket ${results}/ticket_高)
  if(TARGET paramtool)
    add_test(NAME Host.Paramtool
      COMMAND ${PROJECT_SOURCE_DIR}/tests/paramtool/run $<TARGET_FILE:paramtool> ${CMAKE_CROSSCOMPILING_EMULATOR})
  endif()
endif()
