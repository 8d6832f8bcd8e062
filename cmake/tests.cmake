# SPDX-License-Identifier: Apache-2.0
include(GoogleTest)

file(GLOB_RECURSE test_sources CONFIGURE_DEPENDS tests/*_test.cpp)
list(FILTER test_sources EXCLUDE REGEX "/tests/(editing|shared_library)/") # which use what the libraries export
# For another system or standard library, or one whose containers are laid out otherwise.
if(CMAKE_CROSSCOMPILING OR CMAKE_CXX_FLAGS MATCHES "-stdlib=libc\\+\\+|_GLIBCXX_DEBUG")
  include(cmake/googletest_from_source.cmake)
else()
  find_package(GTest REQUIRED)
endif()
if(CMAKE_CROSSCOMPILING)
  # What needs the libraries or the tools of the system that builds.
  list(FILTER test_sources EXCLUDE REGEX "/(other_readers|schema_validation)_test\\.cpp$")
else()
  # The second opinions on what the library writes.
  find_package(EXPAT REQUIRED)
  find_package(LibXml2 REQUIRED)
  find_program(XMLLINT xmllint REQUIRED) # holds the schemas against what the library writes
endif()

set(fuzz_sources fuzz/document_targets.cpp fuzz/texts_target.cpp fuzz/binary_form_target.cpp fuzz/calls_target.cpp)
if(NOT CMAKE_CROSSCOMPILING)
  list(APPEND fuzz_sources fuzz/tokeniser_target.cpp)
endif()
add_executable(zantrel_tests ${test_sources} ${fuzz_sources} tests/support/failing_allocator.cpp)
compile_folders_at_once(zantrel_tests)
target_link_libraries(zantrel_tests PRIVATE zantrel_internal zantrel_warnings GTest::gmock_main)
target_compile_definitions(zantrel_tests PRIVATE "ZANTREL_TESTS=\"${PROJECT_SOURCE_DIR}/tests\"")
if(NOT CMAKE_CROSSCOMPILING)
  target_link_libraries(zantrel_tests PRIVATE EXPAT::EXPAT LibXml2::LibXml2)
  target_compile_definitions(zantrel_tests PRIVATE ZANTREL_TESTS_HAVE_EXPAT)
  set(schema_tests ${test_sources})
  list(FILTER schema_tests INCLUDE REGEX "/schema_validation_test\\.cpp$")
  set_source_files_properties(${schema_tests} tests/editing/schema_test.cpp PROPERTIES COMPILE_DEFINITIONS
    "ZANTREL_XMLLINT=\"${XMLLINT}\";ZANTREL_SCHEMAS=\"${PROJECT_SOURCE_DIR}/schemas\"")
endif()
# Listed when ctest starts and not while building, so that a sanitiser's complaint is a test's and not the build's.
gtest_discover_tests(zantrel_tests DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)

# What passes between a host and the library, with the library as hosts have it.
add_executable(zantrel_border_tests tests/shared_library/border_test.cpp)
target_include_directories(zantrel_border_tests PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(zantrel_border_tests PRIVATE Zantrel::Zantrel zantrel_warnings GTest::gmock_main)
set_target_properties(zantrel_border_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
gtest_discover_tests(zantrel_border_tests TEST_PREFIX Shared. DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)

file(GLOB editing_test_sources CONFIGURE_DEPENDS tests/editing/*_test.cpp)
if(CMAKE_CROSSCOMPILING)
  list(FILTER editing_test_sources EXCLUDE REGEX "/schema_test\\.cpp$") # which needs a tool of the system
endif()
if(WIN32) # whose DLLs have an allocator of their own, which doesn't fail when a program's does
  list(FILTER editing_test_sources EXCLUDE REGEX "/failed_allocation_test\\.cpp$")
endif()
add_executable(zantrel_editing_tests ${editing_test_sources} fuzz/editing_target.cpp tests/support/failing_allocator.cpp)
compile_folders_at_once(zantrel_editing_tests)
target_include_directories(zantrel_editing_tests PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(zantrel_editing_tests PRIVATE Zantrel::Editing zantrel_warnings GTest::gmock_main)
target_compile_features(zantrel_editing_tests PRIVATE cxx_std_20)
target_compile_definitions(zantrel_editing_tests PRIVATE "ZANTREL_TESTS=\"${PROJECT_SOURCE_DIR}/tests\"")
set_target_properties(zantrel_editing_tests PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
gtest_discover_tests(zantrel_editing_tests TEST_PREFIX Editing. DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)

# What uses threads, alone: the part of the tests that is worth a build under ThreadSanitizer.
file(GLOB_RECURSE thread_test_sources CONFIGURE_DEPENDS tests/*thread*_test.cpp)
add_executable(zantrel_thread_tests EXCLUDE_FROM_ALL ${thread_test_sources})
target_link_libraries(zantrel_thread_tests PRIVATE zantrel_internal zantrel_warnings GTest::gmock_main)

# The same bytes on every platform: where programs run that were built here, files are written and compared with a second
# run, and where they are built for another system, with those that were written here.
add_executable(zantrel_written_files tests/written_files/written_files.cpp)
target_link_libraries(zantrel_written_files PRIVATE zantrel_internal zantrel_warnings GTest::gmock)
target_compile_definitions(zantrel_written_files PRIVATE "ZANTREL_TESTS=\"${PROJECT_SOURCE_DIR}/tests\"")
if(CMAKE_CROSSCOMPILING)
  set(ZANTREL_WRITTEN_FILES ${PROJECT_SOURCE_DIR}/build/dev/written_files CACHE PATH
    "Where the tests of the build for this system have written their files")
else()
  set(ZANTREL_WRITTEN_FILES ${PROJECT_BINARY_DIR}/written_files)
  file(MAKE_DIRECTORY ${ZANTREL_WRITTEN_FILES})
  add_test(NAME WrittenFiles.AreWritten COMMAND zantrel_written_files write
    WORKING_DIRECTORY ${ZANTREL_WRITTEN_FILES})
  set_tests_properties(WrittenFiles.AreWritten PROPERTIES FIXTURES_SETUP WrittenFiles)
endif()
add_test(NAME WrittenFiles.AreTheSameEverywhere COMMAND zantrel_written_files compare
  WORKING_DIRECTORY ${ZANTREL_WRITTEN_FILES})
set_tests_properties(WrittenFiles.AreTheSameEverywhere PROPERTIES FIXTURES_REQUIRED WrittenFiles)

# A host that makes its globals before those of the library in it.
add_executable(zantrel_static_host tests/static_host/static_host.cpp tests/static_host/writer.cpp)
target_link_libraries(zantrel_static_host PRIVATE zantrel_internal zantrel_warnings)
add_test(NAME StaticHost.UsesTheConstantsInItsGlobals COMMAND zantrel_static_host)

# What must not compile, and the sentences that say why.
add_test(NAME RefusedValues
  COMMAND ${PROJECT_SOURCE_DIR}/tests/refused_values/run ${CMAKE_CXX_COMPILER} ${PROJECT_SOURCE_DIR}/include)

# Not with sanitisers, whose own system calls would fail instead.
if(UNIX AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  add_executable(zantrel_write_one_file tests/write_faults/write_one_file.cpp)
  target_link_libraries(zantrel_write_one_file PRIVATE Zantrel::Editing zantrel_warnings)
  add_test(NAME WriteFaults
    COMMAND ${PROJECT_SOURCE_DIR}/tests/write_faults/run $<TARGET_FILE:zantrel_write_one_file>)
  set_tests_properties(WriteFaults PROPERTIES SKIP_RETURN_CODE 77)
endif()

# Names and weak symbols are those of one compiler and of 64 bits; sanitisers add their own.
if(BUILD_SHARED_LIBS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize" AND
    (WIN32 OR NOT CMAKE_CROSSCOMPILING))
  foreach(library zantrel zantrel_editing)
    add_test(NAME Exports.${library} COMMAND ${PROJECT_SOURCE_DIR}/tests/exports/run $<TARGET_FILE:${library}>
      ${PROJECT_SOURCE_DIR}/tests/exports/$<IF:$<PLATFORM_ID:Windows>,${library}.dll,lib${library}.so>.txt)
    set_tests_properties(Exports.${library} PROPERTIES ENVIRONMENT "OBJDUMP=${CMAKE_OBJDUMP}")
  endforeach()
endif()
