# SPDX-License-Identifier: Apache-2.0
# The page on which paramtool shows a layout. Its script and style stand in files of their own, from which the build
# makes a source.
set(page_folder ${PROJECT_SOURCE_DIR}/tools/paramtool/page)
file(GLOB page_parts CONFIGURE_DEPENDS ${page_folder}/*.js ${page_folder}/page.css ${page_folder}/page.html)
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/page_files.cpp
  COMMAND ${CMAKE_COMMAND} -D FOLDER=${page_folder} -D OUTPUT=${PROJECT_BINARY_DIR}/page_files.cpp
    -P ${PROJECT_SOURCE_DIR}/cmake/page_files.cmake
  DEPENDS ${page_parts} ${PROJECT_SOURCE_DIR}/cmake/page_files.cmake
  VERBATIM)

# One literal holds the whole script, longer than the standard asks of every compiler.
set_source_files_properties(${PROJECT_BINARY_DIR}/page_files.cpp PROPERTIES COMPILE_OPTIONS -Wno-overlength-strings)

add_library(paramtool_page STATIC
  tools/paramtool/page.cpp tools/paramtool/page_data.cpp ${PROJECT_BINARY_DIR}/page_files.cpp)
target_compile_features(paramtool_page PUBLIC cxx_std_17)
target_include_directories(paramtool_page PUBLIC ${PROJECT_SOURCE_DIR}/tools/paramtool)
target_link_libraries(paramtool_page
  PUBLIC Zantrel::Zantrel Zantrel::Editing nlohmann_json::nlohmann_json PRIVATE zantrel_warnings)

if(ZANTREL_BUILD_TESTS AND NOT CMAKE_CROSSCOMPILING)
  add_executable(zantrel_page_cases tests/page/page_cases.cpp)
  target_include_directories(zantrel_page_cases PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(zantrel_page_cases PRIVATE paramtool_page zantrel_warnings)
  target_compile_features(zantrel_page_cases PRIVATE cxx_std_20)
  add_test(NAME Page.IsMade COMMAND zantrel_page_cases hostile ${PROJECT_BINARY_DIR})
  # Once in a browser is enough: what a sanitiser could see is made by the test above.
  if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    add_test(NAME Page.InABrowser COMMAND ${PROJECT_SOURCE_DIR}/tests/page/run
      $<TARGET_FILE:zantrel_page_cases> $<TARGET_FILE:paramtool> ${PROJECT_BINARY_DIR}/page_modules)
    set_tests_properties(Page.InABrowser PROPERTIES SKIP_RETURN_CODE 77)
  endif()
endif()
