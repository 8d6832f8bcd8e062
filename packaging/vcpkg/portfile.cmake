# SPDX-License-Identifier: Apache-2.0
# The archive and its sum are those that script/release makes; where it can be had is the registry's to say.
vcpkg_download_distfile(archive
  URLS "https://downloads.zantrel.example/zantrel-${VERSION}.tar.gz"
  FILENAME "zantrel-${VERSION}.tar.gz"
  SHA512 0)
vcpkg_extract_source_archive(SOURCE_PATH ARCHIVE "${archive}")

vcpkg_check_features(OUT_FEATURE_OPTIONS features FEATURES tools ZANTREL_BUILD_TOOLS)
vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS
    ${features}
    -DZANTREL_BUILD_TESTS=OFF
    -DZANTREL_BUILD_EXAMPLES=OFF
    -DZANTREL_INSTALL=ON)
vcpkg_cmake_install()
vcpkg_copy_pdbs()
vcpkg_cmake_config_fixup(PACKAGE_NAME zantrel CONFIG_PATH lib/cmake/Zantrel)
vcpkg_fixup_pkgconfig()
if("tools" IN_LIST FEATURES)
  vcpkg_copy_tools(TOOL_NAMES paramtool AUTO_CLEAN)
endif()

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
