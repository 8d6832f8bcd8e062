# SPDX-License-Identifier: Apache-2.0
# Each folder of examples/ that holds sources is one host, named after the folder. Hosts see public headers only.
file(GLOB example_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*/*.cpp)

foreach(source IN LISTS example_sources)
  get_filename_component(folder ${source} DIRECTORY)
  get_filename_component(name ${folder} NAME)
  if(NOT TARGET ${name})
    add_executable(${name})
    target_link_libraries(${name} PRIVATE Zantrel::Zantrel zantrel_warnings)
    set_target_properties(${name} PROPERTIES
      CXX_STANDARD 17
      CXX_STANDARD_REQUIRED ON
      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
  endif()
  target_sources(${name} PRIVATE ${source})
endforeach()
