# SPDX-License-Identifier: Apache-2.0
find_package(GTest REQUIRED)
include(GoogleTest)

file(GLOB_RECURSE test_sources CONFIGURE_DEPENDS tests/*_test.cpp)
add_executable(zantrel_tests ${test_sources})
target_link_libraries(zantrel_tests PRIVATE zantrel_internal zantrel_warnings GTest::gmock_main)
# Listed when ctest starts and not while building, so that a sanitiser's complaint is a test's and not the build's.
gtest_discover_tests(zantrel_tests DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)

# What uses threads, alone: the part of the tests that is worth a build under ThreadSanitizer.
file(GLOB_RECURSE thread_test_sources CONFIGURE_DEPENDS tests/*thread*_test.cpp)
if(thread_test_sources)
  add_executable(zantrel_thread_tests EXCLUDE_FROM_ALL ${thread_test_sources})
  target_link_libraries(zantrel_thread_tests PRIVATE zantrel_internal zantrel_warnings GTest::gmock_main)
endif()
