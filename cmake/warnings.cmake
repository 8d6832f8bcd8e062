# SPDX-License-Identifier: Apache-2.0
# The warnings of this build; a user of the library never gets them.
add_library(zantrel_warnings INTERFACE)

if(MSVC)
  target_compile_options(zantrel_warnings INTERFACE /W4 /permissive- /utf-8)
else()
  target_compile_options(zantrel_warnings INTERFACE
    -Wall -Wextra -Wpedantic
    -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wcast-qual
    -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    # g++ follows null pointers only where it optimises.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wnull-dereference>
    # g++ 12 sees overlaps in the standard library's own joining of strings that aren't there.
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
endif()

if(ZANTREL_FOLDERS_AT_ONCE AND NOT MSVC) # what one source has inside hides nothing of another one
  target_compile_options(zantrel_warnings INTERFACE -Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

if(ZANTREL_WARNINGS_AS_ERRORS)
  target_compile_options(zantrel_warnings INTERFACE $<IF:$<CXX_COMPILER_ID:MSVC>,/WX,-Werror>)
endif()
