# SPDX-License-Identifier: Apache-2.0
# Compiles the sources of a folder as one, which takes a quarter of the time. For builds that are made to be run once, as
# those for other platforms are; the usual builds find what a source forgets to include.
set(alone # of two sources that have something of one name inside, one
  editing/layout_differences.cpp editing/lint_report.cpp editing/migration.cpp editing/pattern_schema.cpp
  editing/pattern_syntax.cpp
  io/system_windows.cpp # which says before all headers what it wants of them
  parameter_files/parameter_node_read.cpp sax/xml_namespaces.cpp store/copying.cpp
  tests/editing/layout_differences_test.cpp tests/editing/migration_test.cpp
  tests/formats/failed_allocation_test.cpp tests/formats/failed_files_test.cpp tests/formats/fuzz_corpora_test.cpp
  tests/formats/hostile_documents_test.cpp tests/formats/round_trip_test.cpp
  tests/layout/parameter_layout_test.cpp tests/parameter_files/machine_parameters_file_test.cpp)

function(compile_folders_at_once target)
  if(NOT ZANTREL_FOLDERS_AT_ONCE)
    return()
  endif()
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE name)
    cmake_path(GET name PARENT_PATH folder)
    # Each command of paramtool has its own options by one name.
    if(NOT name IN_LIST alone AND NOT folder STREQUAL "tools/paramtool/commands")
      string(MAKE_C_IDENTIFIER ${folder} folder)
      set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder})
    endif()
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
endfunction()
