// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/parameter_files/machine_parameters_file.h>

#include <regex>
#include <sstream>
#include <string>

namespace TestSupport {

/// The bytes of the database's machine parameters file, or nothing where it can't be written.
inline std::string MachineParameters(Zantrel::ParameterDatabase const& database, bool profileListsOnly) {
    Zantrel::KlvrProperties::WriteOptions options;
    options.m_profileListsOnly = profileListsOnly;
    std::ostringstream out;
    return Zantrel::KlvrProperties::WriteStream(database, out, options) ? out.str() : std::string();
}

/// A document with "[N:" for "<Property Name='N'>" and "]" for its end.
inline std::string WithProperties(std::string const& text) {
    std::string const opened = std::regex_replace(text, std::regex("\\[(\\w):"), "<Property Name='$1'>");
    return std::regex_replace(opened, std::regex("\\]"), "</Property>");
}

} // namespace TestSupport
