// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <regex>
#include <string>

namespace TestSupport {

/// A document with "[N:" for "<Property Name='N'>" and "]" for its end.
inline std::string WithProperties(std::string const& text) {
    std::string const opened = std::regex_replace(text, std::regex("\\[(\\w):"), "<Property Name='$1'>");
    return std::regex_replace(opened, std::regex("\\]"), "</Property>");
}

} // namespace TestSupport
