# SPDX-License-Identifier: Apache-2.0
# The Python package, on the public headers of both libraries. It is laid out in the build folder as a wheel holds it,
# so that tests use it where it stands; target python_wheel packs it.
if(NOT BUILD_SHARED_LIBS)
  message(FATAL_ERROR "The Python package carries the shared libraries: set BUILD_SHARED_LIBS, or not ZANTREL_BUILD_PYTHON")
endif()
find_package(Python3 COMPONENTS Interpreter Development.Module REQUIRED)
set(PYBIND11_FINDPYTHON OFF)
set(PYTHON_EXECUTABLE ${Python3_EXECUTABLE})
find_package(pybind11 2.10 REQUIRED)

set(python_package ${PROJECT_BINARY_DIR}/python)
file(GLOB python_sources CONFIGURE_DEPENDS bindings/python/src/*.cpp)
pybind11_add_module(_zantrel NO_EXTRAS ${python_sources})
if(can_optimise_at_link_time)
  set_target_properties(_zantrel PROPERTIES INTERPROCEDURAL_OPTIMIZATION_RELEASE ON)
endif()
target_link_libraries(_zantrel PRIVATE Zantrel::Zantrel Zantrel::Editing zantrel_warnings zantrel_hardening)
set_target_properties(_zantrel PROPERTIES
  DEBUG_POSTFIX "" # Python looks for the module by its name
  CXX_STANDARD 20
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  BUILD_RPATH_USE_ORIGIN ON
  BUILD_WITH_INSTALL_RPATH ON
  INSTALL_RPATH "$ORIGIN"
  LIBRARY_OUTPUT_DIRECTORY ${python_package}/zantrel)

# Beside it the libraries, and what is Python already.
set(python_files __init__.py __main__.py _arguments.py _docs.py _edit.py _files.py _protocols.py _types.py _zantrel.pyi
  py.typed)
list(TRANSFORM python_files PREPEND ${PROJECT_SOURCE_DIR}/bindings/python/zantrel/)
if(WIN32)
  set(python_libraries $<TARGET_FILE:zantrel> $<TARGET_FILE:zantrel_editing>)
else()
  set(python_libraries $<TARGET_SONAME_FILE:zantrel> $<TARGET_SONAME_FILE:zantrel_editing>)
endif()
add_custom_target(python_package ALL
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${python_files} ${python_libraries} ${python_package}/zantrel
  DEPENDS _zantrel
  VERBATIM)

# What a wheel holds beside the package; pack_wheel.py adds the list of files.
execute_process(COMMAND ${Python3_EXECUTABLE} -c
  "import sys, sysconfig as s; print('cp%d%d' % sys.version_info[:2], s.get_platform().replace('-', '_').replace('.', '_'), sep=';')"
  OUTPUT_VARIABLE python_tags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
list(GET python_tags 0 python_version_tag)
list(GET python_tags 1 python_platform_tag)
set(python_wheel zantrel-${PROJECT_VERSION})
file(REMOVE_RECURSE ${PROJECT_BINARY_DIR}/wheel) # in which another version has left a folder of its own
foreach(file METADATA WHEEL)
  configure_file(bindings/python/${file}.in ${PROJECT_BINARY_DIR}/wheel/${python_wheel}.dist-info/${file} @ONLY)
endforeach()
add_custom_target(python_wheel
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${PROJECT_BINARY_DIR}/wheel/zantrel
  COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/wheel/zantrel ${PROJECT_BINARY_DIR}/dist
  COMMAND ${CMAKE_COMMAND} -E copy ${python_files} ${python_libraries} $<TARGET_FILE:_zantrel>
    ${PROJECT_BINARY_DIR}/wheel/zantrel
  COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_BINARY_DIR}/wheel/${python_wheel}.dist-info
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/bindings/python/pack_wheel.py ${PROJECT_BINARY_DIR}/wheel
    ${PROJECT_BINARY_DIR}/dist/${python_wheel}-${python_version_tag}-${python_version_tag}-${python_platform_tag}.whl
  DEPENDS _zantrel
  VERBATIM)
