# SPDX-License-Identifier: Apache-2.0
# Each benchmarks/<subject>_benchmark.cpp is one program.
find_package(benchmark REQUIRED)
find_package(EXPAT REQUIRED)    # the unit that reading is measured in
find_package(pugixml REQUIRED)  # the rivals
find_package(nlohmann_json REQUIRED)

file(GLOB benchmark_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/benchmarks/*_benchmark.cpp)
foreach(source IN LISTS benchmark_sources)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/benchmarks)
  if(name STREQUAL editing_benchmark) # which uses what the libraries export
    target_compile_features(${name} PRIVATE cxx_std_20)
    target_link_libraries(${name} PRIVATE Zantrel::Editing zantrel_warnings benchmark::benchmark_main)
    continue()
  endif()
  target_link_libraries(${name} PRIVATE
    zantrel_internal zantrel_warnings benchmark::benchmark_main EXPAT::EXPAT pugixml::pugixml
    nlohmann_json::nlohmann_json)
endforeach()
