# SPDX-License-Identifier: Apache-2.0
# Sets windows_runtime to the libraries of the compiler that programs need beside them on a system without it. The DLL and
# its hosts share them: with a runtime of its own, the library would neither see the global locale of a host nor count the
# exceptions that pass from one to the other.
set(windows_runtime)
if(MINGW AND CMAKE_CROSSCOMPILING)
  foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
      OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    list(APPEND windows_runtime ${path})
  endforeach()
endif()
