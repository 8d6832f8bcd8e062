# SPDX-License-Identifier: Apache-2.0
# What every host would write by hand, on the library's public headers only.
file(GLOB editing_sources CONFIGURE_DEPENDS editing/*.cpp)
add_library(zantrel_editing ${editing_sources})
add_library(Zantrel::Editing ALIAS zantrel_editing)
optimise_at_link_time(zantrel_editing)
target_compile_features(zantrel_editing PRIVATE cxx_std_20 INTERFACE cxx_std_17)
target_include_directories(zantrel_editing PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(zantrel_editing PUBLIC Zantrel::Zantrel PRIVATE
  $<BUILD_INTERFACE:zantrel_warnings> $<BUILD_INTERFACE:zantrel_hardening>)
if(BUILD_SHARED_LIBS)
  target_compile_definitions(zantrel_editing PRIVATE ZANTREL_EDITING_BUILDING)
else()
  target_compile_definitions(zantrel_editing PUBLIC ZANTREL_EDITING_STATIC)
endif()
set_target_properties(zantrel_editing PROPERTIES
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
  EXPORT_NAME Editing)
if(WIN32 AND BUILD_SHARED_LIBS)
  set_target_properties(zantrel_editing PROPERTIES
    PREFIX ""
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
endif()
