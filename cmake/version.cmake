# SPDX-License-Identifier: Apache-2.0
# Sets zantrel_version to what the public header says, in which the version is written once.
set(zantrel_version "")
foreach(part MAJOR MINOR PATCH)
  file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../include/zantrel/version.h line REGEX "^#define ZANTREL_VERSION_${part} [0-9]+$")
  string(REGEX REPLACE ".* " "" number "${line}")
  list(APPEND zantrel_version ${number})
endforeach()
list(JOIN zantrel_version "." zantrel_version)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/../include/zantrel/version.h)
