# SPDX-License-Identifier: Apache-2.0
# What debuggers need to show layouts, values and tickets as their users see them. gdb loads its file by itself for a library
# that is installed with the prefix /usr: it looks below its own folder for the library's path. Elsewhere a user loads it.
if(ZANTREL_INSTALL AND BUILD_SHARED_LIBS)
  if(UNIX AND NOT APPLE)
    if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
      install(FILES tools/debuggers/zantrel_gdb.py RENAME $<TARGET_FILE_NAME:zantrel>-gdb.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load${CMAKE_INSTALL_FULL_LIBDIR} COMPONENT Development)
    else()
      install(FILES tools/debuggers/zantrel_gdb.py DESTINATION ${CMAKE_INSTALL_DATADIR}/zantrel COMPONENT Development)
    endif()
  endif()
  # It names the DLL whose inside it shows, and a debug build's has another name.
  file(READ tools/debuggers/zantrel.natvis natvis)
  string(REPLACE "zantrel.dll!" "$<TARGET_FILE_NAME:zantrel>!" natvis "${natvis}")
  file(GENERATE OUTPUT $<CONFIG>/zantrel.natvis CONTENT "${natvis}" TARGET zantrel)
  install(FILES ${PROJECT_BINARY_DIR}/$<CONFIG>/zantrel.natvis DESTINATION ${CMAKE_INSTALL_DATADIR}/zantrel
    RENAME zantrel$<$<CONFIG:Debug>:d>.natvis COMPONENT Development)
endif()

if(ZANTREL_BUILD_TESTS AND NOT CMAKE_CROSSCOMPILING)
  add_test(NAME Debuggers.Natvis COMMAND ${PROJECT_SOURCE_DIR}/tests/debuggers/natvis ${PROJECT_SOURCE_DIR})
  find_program(GDB gdb)
  # Sanitisers don't run below a debugger, and the printers know one standard library.
  if(GDB AND BUILD_SHARED_LIBS AND CMAKE_BUILD_TYPE STREQUAL "Debug" AND
      NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize|-stdlib=libc\\+\\+")
    add_executable(zantrel_debugger_host tests/debuggers/host.cpp)
    target_link_libraries(zantrel_debugger_host PRIVATE Zantrel::Zantrel zantrel_warnings)
    set_target_properties(zantrel_debugger_host PROPERTIES CXX_STANDARD 17 CXX_STANDARD_REQUIRED ON)
    add_test(NAME Debuggers.Gdb COMMAND ${PROJECT_SOURCE_DIR}/tests/debuggers/gdb ${GDB}
      $<TARGET_FILE:zantrel_debugger_host> ${PROJECT_SOURCE_DIR}/tools/debuggers/zantrel_gdb.py
      ${PROJECT_SOURCE_DIR}/tests/debuggers/expected.txt)
    set_tests_properties(Debuggers.Gdb PROPERTIES SKIP_RETURN_CODE 77)
  endif()
endif()
