# SPDX-License-Identifier: Apache-2.0
# The distribution ships GoogleTest built for its own system, and its sources for the others.
find_path(GOOGLETEST_SOURCES googlemock/CMakeLists.txt
  PATHS /usr/src/googletest NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)

function(add_googletest)
  set(CMAKE_POLICY_DEFAULT_CMP0077 NEW) # lets it take these
  set(BUILD_SHARED_LIBS OFF)
  set(INSTALL_GTEST OFF)
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "wasm32") # has neither threads nor processes
    set(gtest_disable_pthreads ON)
    add_compile_definitions(GTEST_HAS_PTHREAD=0 GTEST_HAS_DEATH_TEST=0 GTEST_HAS_STREAM_REDIRECTION=0
      _WASI_EMULATED_SIGNAL)
  endif()
  add_subdirectory(${GOOGLETEST_SOURCES} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endfunction()
add_googletest()
