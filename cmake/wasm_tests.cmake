# SPDX-License-Identifier: Apache-2.0
# The tests that need neither files nor threads and in which nothing is thrown; see docs/platforms.md.
include(GoogleTest)

set(wasm_tests
  text/text_conversion text/text_numbers xml/xml_names xml/xml_tokeniser store/bag store/nesting
  layout/layout_node layout/layout_node_values layout/resource_dictionary
  database/containers database/content_list database/formatting database/navigation
  database/values database/walk)
include(cmake/googletest_from_source.cmake)

list(TRANSFORM wasm_tests REPLACE ".+" "tests/\\0_test.cpp" OUTPUT_VARIABLE wasm_test_sources)
add_executable(zantrel_tests ${wasm_test_sources} tests/wasm/no_exceptions.cpp)
compile_folders_at_once(zantrel_tests)
target_link_libraries(zantrel_tests PRIVATE zantrel_internal zantrel_warnings GTest::gmock_main)
gtest_discover_tests(zantrel_tests DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)
