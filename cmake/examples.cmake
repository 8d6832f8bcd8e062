# SPDX-License-Identifier: Apache-2.0
# Each folder of examples/ that holds sources is one host, named after the folder; common/ holds what they share.
# Hosts see public headers only.
file(GLOB example_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*/*.cpp)
set(common_sources ${example_sources})
list(FILTER common_sources INCLUDE REGEX "/examples/common/")
list(FILTER example_sources EXCLUDE REGEX "/examples/common/")

foreach(source IN LISTS example_sources)
  get_filename_component(folder ${source} DIRECTORY)
  get_filename_component(name ${folder} NAME)
  if(NOT TARGET ${name})
    add_executable(${name} ${common_sources})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/examples)
    target_link_libraries(${name} PRIVATE Zantrel::Zantrel Zantrel::Editing zantrel_warnings)
    set_target_properties(${name} PROPERTIES
      CXX_STANDARD 17
      CXX_STANDARD_REQUIRED ON
      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
  endif()
  target_sources(${name} PRIVATE ${source})
endforeach()

# Hosts end with 0 when all that they check holds. They use the library as its users do, with what it exports.
if(ZANTREL_BUILD_TESTS)
  set(data ${PROJECT_SOURCE_DIR}/examples/data)
  set(results ${PROJECT_BINARY_DIR}/results)
  file(MAKE_DIRECTORY ${results})
  add_test(NAME Host.RoundTrip COMMAND round_trip ${data}/machine_parameters.xml ${results}/round_trip.xml)
  add_test(NAME Host.LayoutFromFile COMMAND layout_from_file ${data}/powder_bed_machine.xml ${results}/machine_ü)
  add_test(NAME Host.BuildTicket COMMAND build_ticket ${results}/ticket_高)
endif()
