# SPDX-License-Identifier: Apache-2.0
# Toolchain: builds for Windows on another system, with MinGW-w64.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
# With the threads of the standard library.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix) # for GoogleTest
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Nothing of the system that builds is linked, but its tools are run. Packages may be installed anywhere.
list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)

# The stack that programs have there by default; this linker would give them twice as much.
set(CMAKE_EXE_LINKER_FLAGS_INIT -Wl,--stack,1048576)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tests/windows/run_program)
