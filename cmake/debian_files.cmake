# SPDX-License-Identifier: Apache-2.0
# Run by CPack when the components stand in their folders, before they are packed: adds what Debian wants in each package.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC) # SOURCE_DATE_EPOCH, where it is set

# What lintian warns of, and why it stays.
set(kept_ALL "# Nobody asked Debian for these packages.
initial-upload-closes-no-bugs")
set(kept_RUNTIME "# CPack writes the scripts.
maintscript-calls-ldconfig")
set(kept_DOCUMENTATION "# The README leads to it by this name.
wrong-name-for-upstream-changelog")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
  set(documents ${root}${CPACK_PACKAGING_INSTALL_PREFIX}/share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  file(MAKE_DIRECTORY ${documents})
  configure_file(${CPACK_ZANTREL_COPYRIGHT} ${documents}/copyright COPYONLY)
  file(WRITE ${documents}/changelog.Debian "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * Version ${CPACK_PACKAGE_VERSION}.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
  file(WRITE ${root}${CPACK_PACKAGING_INSTALL_PREFIX}/share/lintian/overrides/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}
    "${kept_ALL}\n${kept_${upper}}\n")
  file(GLOB pages ${root}${CPACK_PACKAGING_INSTALL_PREFIX}/share/man/*/*.1)
  execute_process(COMMAND gzip -9n ${documents}/changelog.Debian ${pages} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND chmod -R u=rwX,go=rX ${root} COMMAND_ERROR_IS_FATAL ANY)
  if(DEFINED ENV{SOURCE_DATE_EPOCH}) # the same sources give the same packages
    execute_process(COMMAND find ${root} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
      COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
