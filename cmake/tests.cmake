# SPDX-License-Identifier: Apache-2.0
find_package(GTest REQUIRED)
# The second opinions on what the library writes.
find_package(EXPAT REQUIRED)
find_package(LibXml2 REQUIRED)
find_program(XMLLINT xmllint REQUIRED) # holds the schemas against what the library writes
include(GoogleTest)

file(GLOB_RECURSE test_sources CONFIGURE_DEPENDS tests/*_test.cpp)
add_executable(zantrel_tests ${test_sources})
target_link_libraries(zantrel_tests PRIVATE
  zantrel_internal zantrel_warnings GTest::gmock_main EXPAT::EXPAT LibXml2::LibXml2)
set_source_files_properties(
  tests/layout_files/schema_validation_test.cpp tests/build_ticket/schema_validation_test.cpp
  tests/parameter_files/machine_parameters_file_test.cpp
  PROPERTIES COMPILE_DEFINITIONS
  "ZANTREL_XMLLINT=\"${XMLLINT}\";ZANTREL_SCHEMAS=\"${PROJECT_SOURCE_DIR}/schemas\"")
# Listed when ctest starts and not while building, so that a sanitiser's complaint is a test's and not the build's.
gtest_discover_tests(zantrel_tests DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)

# What uses threads, alone: the part of the tests that is worth a build under ThreadSanitizer.
file(GLOB_RECURSE thread_test_sources CONFIGURE_DEPENDS tests/*thread*_test.cpp)
add_executable(zantrel_thread_tests EXCLUDE_FROM_ALL ${thread_test_sources})
target_link_libraries(zantrel_thread_tests PRIVATE zantrel_internal zantrel_warnings GTest::gmock_main)

# Not with sanitisers, whose own system calls would fail instead.
if(UNIX AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  add_executable(zantrel_write_one_file tests/write_faults/write_one_file.cpp)
  target_link_libraries(zantrel_write_one_file PRIVATE zantrel_internal zantrel_warnings)
  add_test(NAME WriteFaults
    COMMAND ${PROJECT_SOURCE_DIR}/tests/write_faults/run $<TARGET_FILE:zantrel_write_one_file>)
  set_tests_properties(WriteFaults PROPERTIES SKIP_RETURN_CODE 77)
endif()
