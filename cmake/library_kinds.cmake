# SPDX-License-Identifier: Apache-2.0
# The kinds of libraries. zantrel and zantrel_editing, which everything here uses, are of the kind that BUILD_SHARED_LIBS
# says. ZANTREL_BUILD_BOTH_KINDS makes the others beside them: zantrel_static and zantrel_editing_static, or ..._shared.
# Hosts say Zantrel::Zantrel for the first, and Zantrel::ZantrelShared or Zantrel::ZantrelStatic for the one they want.
if(BUILD_SHARED_LIBS)
  set(default_kind SHARED)
  set(default_name Shared)
  set(other_kind STATIC)
else()
  set(default_kind STATIC)
  set(default_name Static)
  set(other_kind SHARED)
endif()
string(TOLOWER ${other_kind} other_name)

# Reading a leaf goes through a dozen small functions of four floors; inlined into each other they take a quarter less
# time. Release builds of shared libraries only: a static one would ask the same compiler of its user.
if(BUILD_SHARED_LIBS OR ZANTREL_BUILD_BOTH_KINDS)
  include(CheckIPOSupported)
  check_ipo_supported(RESULT can_optimise_at_link_time OUTPUT ignored LANGUAGES CXX)
endif()

# compile_as(<kind> <target> <prefix>): how the sources of a library are compiled. Its macros begin with the prefix.
function(compile_as kind target prefix)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  if(UNIX)
    # Files beyond 2 GB and times beyond 2038, where the C library asks for it: on 32 bits.
    target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
  endif()
  if(kind STREQUAL STATIC)
    target_compile_definitions(${target} PRIVATE ${prefix}_STATIC)
    return()
  endif()
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  target_compile_definitions(${target} PRIVATE ${prefix}_BUILDING)
  # Without it g++ neither inlines exported functions nor calls them directly inside the library.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
  if(can_optimise_at_link_time)
    set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)
  endif()
endfunction()

# Takes the options of a target without naming it as something that hosts of a static library link, too.
function(take_options target from)
  target_compile_options(${target} PRIVATE $<TARGET_PROPERTY:${from},INTERFACE_COMPILE_OPTIONS>)
  target_link_options(${target} PRIVATE $<TARGET_PROPERTY:${from},INTERFACE_LINK_OPTIONS>)
endfunction()

# offer_as(<kind> <target> <prefix> <name>): how a library is linked, and what hosts see of it, by the name
# Zantrel::<name>.
function(offer_as kind target prefix name)
  string(TOLOWER ${prefix} file)
  set(name_of_kind ${name}Shared)
  if(kind STREQUAL STATIC)
    set(name_of_kind ${name}Static)
  endif()
  add_library(Zantrel::${name_of_kind} ALIAS ${target})
  if(kind STREQUAL default_kind)
    add_library(Zantrel::${name} ALIAS ${target})
    set(name_of_kind ${name})
  endif()
  take_options(${target} zantrel_hardening)
  target_compile_features(${target} INTERFACE cxx_std_17)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  # Before 1.0 a new minor version may change the binary interface.
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${file}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
    EXPORT_NAME ${name_of_kind})
  if(kind STREQUAL STATIC)
    target_compile_definitions(${target} INTERFACE ${prefix}_STATIC)
    if(MSVC AND ZANTREL_BUILD_BOTH_KINDS)
      set_target_properties(${target} PROPERTIES OUTPUT_NAME ${file}_static) # zantrel.lib is what imports the DLL
    endif()
    return()
  endif()
  if(can_optimise_at_link_time)
    set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)
  endif()
  if(WIN32)
    set_target_properties(${target} PROPERTIES
      PREFIX "" # zantrel.dll
      RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/examples) # a program finds DLLs beside itself
    add_version_resource(${target} ${name})
  elseif(UNIX AND NOT APPLE)
    # Otherwise the first file that is written waits while names of the C++ library are looked up one by one.
    target_link_options(${target} PRIVATE LINKER:-z,now)
  endif()
endfunction()

# The version, where Windows shows it, with the name that the library has in this configuration.
function(add_version_resource target name)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/version.rc.in ${PROJECT_BINARY_DIR}/${target}.rc.in @ONLY)
  set(resource ${PROJECT_BINARY_DIR}/$<CONFIG>/${target}.rc)
  file(GENERATE OUTPUT ${resource} INPUT ${PROJECT_BINARY_DIR}/${target}.rc.in)
  # Objects of their own: the options of this compiler aren't those of the other.
  add_library(${target}_resource OBJECT ${resource})
  target_sources(${target} PRIVATE $<TARGET_OBJECTS:${target}_resource>)
endfunction()
