# SPDX-License-Identifier: Apache-2.0
# The pages of docs/ that teach have a program each, docs/programs/<page>.cpp, which hosts could begin with. The page shows
# all of it, and what it says.
file(GLOB guide_programs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/programs/*.cpp)
find_package(Threads REQUIRED)

foreach(source IN LISTS guide_programs)
  get_filename_component(name ${source} NAME_WE)
  add_executable(guide_${name} ${source})
  target_link_libraries(guide_${name} PRIVATE Zantrel::Zantrel Zantrel::Editing Threads::Threads zantrel_warnings)
  set_target_properties(guide_${name} PROPERTIES
    CXX_STANDARD 17
    CXX_STANDARD_REQUIRED ON
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples)
  add_test(NAME Guide.${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/guide/run
    ${PROJECT_SOURCE_DIR}/docs/${name}.md ${source} $<TARGET_FILE:guide_${name}> ${PROJECT_BINARY_DIR}/results/${name})
endforeach()
