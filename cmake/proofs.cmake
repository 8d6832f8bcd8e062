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
  # Who brings an engine brings the flags of the sanitisers, too.
  set(ZANTREL_FUZZING_ENGINE "" CACHE STRING "What fuzz targets are linked with, instead of libFuzzer")
  set(ZANTREL_FUZZING_SANITISERS "address,undefined" CACHE STRING "What fuzz targets are built with beside libFuzzer")
  add_library(zantrel_fuzzing INTERFACE)
  target_compile_features(zantrel_fuzzing INTERFACE cxx_std_20)
  target_include_directories(zantrel_fuzzing INTERFACE include ${PROJECT_SOURCE_DIR})
  target_compile_definitions(zantrel_fuzzing INTERFACE ZANTREL_STATIC ZANTREL_EDITING_STATIC ZANTREL_SMALL_PIECES
    "ZANTREL_TESTS=\"${PROJECT_SOURCE_DIR}/tests\"" "ZANTREL_EXAMPLES=\"${PROJECT_BINARY_DIR}/generated/examples.inc\"")
  # Within the programs, for these run on machines where nothing else of the sources is.
  file(GLOB examples CONFIGURE_DEPENDS tests/formats/examples/*.xml)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${examples})
  foreach(example IN LISTS examples)
    file(READ ${example} text)
    get_filename_component(name ${example} NAME_WE)
    string(APPEND rows "{\"${name}\", R\"(${text})\"},\n")
  endforeach()
  file(CONFIGURE OUTPUT generated/examples.inc CONTENT "@rows@" @ONLY)
  if(ZANTREL_FUZZING_ENGINE)
    set(fuzzing_engine ${ZANTREL_FUZZING_ENGINE})
  else()
    if(ZANTREL_FUZZING_SANITISERS)
      set(fuzzing_sanitisers -fsanitize=${ZANTREL_FUZZING_SANITISERS})
    endif()
    target_compile_options(zantrel_fuzzing INTERFACE -O2 -gline-tables-only -fno-omit-frame-pointer
      -D_GLIBCXX_ASSERTIONS -fsanitize-coverage=inline-8bit-counters,pc-table ${fuzzing_sanitisers} -fno-sanitize-recover=all)
    target_link_options(zantrel_fuzzing INTERFACE ${fuzzing_sanitisers})
    set(fuzzing_engine -fsanitize=fuzzer)
  endif()

  # Compiled anew, for only what is instrumented guides the fuzzer.
  file(GLOB fuzz_sources CONFIGURE_DEPENDS fuzz/*_target.cpp fuzz/*_targets.cpp fuzz/xml_mutator.cpp)
  add_library(zantrel_fuzzed STATIC EXCLUDE_FROM_ALL ${sources} ${editing_sources} ${fuzz_sources})
  target_link_libraries(zantrel_fuzzed PUBLIC zantrel_fuzzing EXPAT::EXPAT PRIVATE zantrel_warnings)

  # One program for each row of the tables in fuzz/.
  add_custom_target(zantrel_fuzz)
  foreach(target GenericParameters MachineParameters MetaFile WholeMetaFile PropertyTemplate Ticket Filter Validity
      MachineValidity Editing Tokeniser Texts BinaryForm Calls)
    add_executable(zantrel_fuzz_${target} EXCLUDE_FROM_ALL fuzz/run_by_fuzzer.cpp)
    target_compile_definitions(zantrel_fuzz_${target} PRIVATE "ZANTREL_FUZZ_TARGET=\"${target}\"")
    target_link_libraries(zantrel_fuzz_${target} PRIVATE zantrel_fuzzed zantrel_warnings ${fuzzing_engine})
    add_dependencies(zantrel_fuzz zantrel_fuzz_${target})
  endforeach()
  add_executable(zantrel_fuzz_corpus EXCLUDE_FROM_ALL fuzz/corpus_tool.cpp)
  target_link_libraries(zantrel_fuzz_corpus PRIVATE zantrel_fuzzed zantrel_warnings)
  add_dependencies(zantrel_fuzz zantrel_fuzz_corpus)
endif()
