# SPDX-License-Identifier: Apache-2.0
# Toolchain: builds for 32 bits on a system of 64, whose processor runs what is built.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc) # for GoogleTest
set(CMAKE_CXX_COMPILER g++)
# The kernel's headers are the same for both; the package that would make them found can't stand beside compilers for
# other processors.
foreach(language C CXX)
  set(CMAKE_${language}_FLAGS_INIT "-m32 -idirafter /usr/include/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu")
endforeach()
