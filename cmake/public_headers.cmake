# SPDX-License-Identifier: Apache-2.0
# Each public header compiled alone, included twice, as the C++17 that the library promises to its users.
file(GLOB_RECURSE public_headers CONFIGURE_DEPENDS
  RELATIVE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/include/*.h)
list(FILTER public_headers EXCLUDE REGEX "/macros_(away|back)\\.h$") # two halves, around what others declare

set(header_checks)
foreach(header IN LISTS public_headers)
  set(check ${PROJECT_BINARY_DIR}/public_headers/${header}.cpp)
  file(CONFIGURE OUTPUT ${check} CONTENT "#include <${header}>\n#include <${header}>\n")
  list(APPEND header_checks ${check})
endforeach()

add_library(zantrel_public_headers OBJECT ${header_checks})
target_link_libraries(zantrel_public_headers PRIVATE Zantrel::Editing zantrel_warnings)
set_target_properties(zantrel_public_headers PROPERTIES CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON)
target_sources(zantrel_public_headers PRIVATE tests/public_headers/after_macros.cpp)

file(GLOB example_sources CONFIGURE_DEPENDS examples/*/*.cpp)
# All of them, and the hosts, as the standards that came since.
foreach(standard 20 23)
  add_library(zantrel_as_cxx${standard} OBJECT ${example_sources} tests/public_headers/after_macros.cpp)
  target_include_directories(zantrel_as_cxx${standard} PRIVATE examples)
  target_link_libraries(zantrel_as_cxx${standard} PRIVATE Zantrel::Editing zantrel_warnings)
  set_target_properties(zantrel_as_cxx${standard} PROPERTIES CXX_STANDARD ${standard} CXX_STANDARD_REQUIRED ON)
endforeach()
