// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

/// The files of page/, put into the program by the build (cmake/page_files.cmake).
namespace Paramtool::PageFiles {

extern std::string_view const Html;
extern std::string_view const Style;
extern std::string_view const Script;
extern std::string_view const StyleHash; ///< SHA-256, in base64
extern std::string_view const ScriptHash;

} // namespace Paramtool::PageFiles
