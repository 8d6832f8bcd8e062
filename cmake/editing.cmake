# SPDX-License-Identifier: Apache-2.0
# What every host would write by hand, on the library's public headers only.
file(GLOB editing_sources CONFIGURE_DEPENDS editing/*.cpp standard/*.cpp) # its own, which the first keeps to itself

function(add_editing kind target library)
  add_library(${target} ${kind} ${editing_sources})
  compile_as(${kind} ${target} ZANTREL_EDITING)
  if(kind STREQUAL default_kind) # one kind is asked; g++ 12 sees in the static one what isn't there
    take_options(${target} zantrel_warnings)
  else()
    target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-w>)
  endif()
  compile_folders_at_once(${target})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${target} PUBLIC ${library})
  offer_as(${kind} ${target} ZANTREL_EDITING Editing)
endfunction()

add_editing(${default_kind} zantrel_editing zantrel)
if(ZANTREL_BUILD_BOTH_KINDS)
  add_editing(${other_kind} zantrel_editing_${other_name} zantrel_${other_name})
endif()
