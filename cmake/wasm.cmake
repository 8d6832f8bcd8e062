# SPDX-License-Identifier: Apache-2.0
# Toolchain: builds for WebAssembly with the system interface WASI, and runs what is built in Node.js.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
foreach(language C CXX)
  set(CMAKE_${language}_COMPILER_TARGET wasm32-wasi)
endforeach()
set(CMAKE_C_COMPILER clang) # for GoogleTest
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# The linker would give the stack 64 KiB, and what overflows it would go on in the data.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-z,stack-size=1048576 -Wl,--stack-first")

set(CMAKE_CROSSCOMPILING_EMULATOR node --no-warnings ${CMAKE_CURRENT_LIST_DIR}/../tests/wasm/run_program.mjs)
