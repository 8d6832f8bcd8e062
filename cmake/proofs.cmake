# SPDX-License-Identifier: Apache-2.0
# What holds the tokeniser to libexpat's verdicts.
find_package(EXPAT REQUIRED)

# Run with the folder of the conformance suite and tests/conformance/expected_differences.txt.
add_executable(zantrel_conformance EXCLUDE_FROM_ALL tests/conformance/tokeniser_conformance.cpp)
target_link_libraries(zantrel_conformance PRIVATE zantrel_internal zantrel_warnings EXPAT::EXPAT)

if(ZANTREL_BUILD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "The fuzz targets need clang++.")
  endif()
  # Compiled anew, for only what is instrumented guides the fuzzer.
  set(fuzz_flags -g -fno-omit-frame-pointer -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
  function(zantrel_add_fuzz_target name)
    add_executable(zantrel_fuzz_${name} EXCLUDE_FROM_ALL fuzz/${name}_fuzz.cpp ${ARGN})
    target_compile_features(zantrel_fuzz_${name} PRIVATE cxx_std_20)
    target_compile_options(zantrel_fuzz_${name} PRIVATE -O1 ${fuzz_flags})
    target_include_directories(zantrel_fuzz_${name} PRIVATE include ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_options(zantrel_fuzz_${name} PRIVATE ${fuzz_flags})
    target_link_libraries(zantrel_fuzz_${name} PRIVATE zantrel_warnings EXPAT::EXPAT)
  endfunction()

  file(GLOB tokeniser_sources CONFIGURE_DEPENDS text/*.cpp xml/*.cpp)
  zantrel_add_fuzz_target(tokeniser ${tokeniser_sources})
  file(GLOB_RECURSE layout_file_sources CONFIGURE_DEPENDS
    text/*.cpp io/*.cpp xml/*.cpp sax/*.cpp store/*.cpp
    layout/*.cpp database/*.cpp parameter_files/*.cpp layout_files/*.cpp build_ticket/*.cpp)
  zantrel_add_fuzz_target(layout_file ${layout_file_sources})
  target_compile_definitions(zantrel_fuzz_layout_file PRIVATE "ZANTREL_TESTS=\"${PROJECT_SOURCE_DIR}/tests\"")
endif()
