# SPDX-License-Identifier: Apache-2.0
# What compilers and linkers offer against faults that nobody has found yet. An option of the release preset and not of
# every build: distributions and sanitisers bring their own. tests/hardening/run looks for it in what was built.
add_library(zantrel_hardening INTERFACE)

if(ZANTREL_HARDENED AND NOT MSVC)
  include(CheckCXXCompilerFlag)
  target_compile_options(zantrel_hardening INTERFACE -fstack-protector-strong)
  # Returns and jumps that only go where they may, in processors that check it.
  check_cxx_compiler_flag(-fcf-protection=full can_protect_control_flow)
  if(can_protect_control_flow AND NOT WIN32)
    target_compile_options(zantrel_hardening INTERFACE -fcf-protection=full)
  endif()
  # The C library's checks of sizes need optimisation, and MinGW's a library of their own.
  if(NOT WIN32)
    target_compile_options(zantrel_hardening INTERFACE
      $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=3>)
    target_link_options(zantrel_hardening INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
  endif()
endif()
