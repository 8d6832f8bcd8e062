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
  file(GLOB tokeniser_sources CONFIGURE_DEPENDS platform/xml/*.cpp)
  add_executable(zantrel_fuzz_tokeniser EXCLUDE_FROM_ALL fuzz/tokeniser_fuzz.cpp ${tokeniser_sources})
  set(fuzz_flags -g -fno-omit-frame-pointer -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all)
  target_compile_features(zantrel_fuzz_tokeniser PRIVATE cxx_std_20)
  target_compile_options(zantrel_fuzz_tokeniser PRIVATE -O1 ${fuzz_flags})
  target_include_directories(zantrel_fuzz_tokeniser PRIVATE include ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_options(zantrel_fuzz_tokeniser PRIVATE ${fuzz_flags})
  target_link_libraries(zantrel_fuzz_tokeniser PRIVATE zantrel_warnings EXPAT::EXPAT)
endif()
