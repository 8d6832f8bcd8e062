// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// How lines reach the user: in UTF-8, with control characters of the files made visible, so that a value can
/// neither break a line nor command the terminal.
namespace Paramtool {

enum class Look { Plain = 0, Bold = 1, Red = 31, Green = 32 };

/// Prints a line to the standard output, with its look where that is a terminal and NO_COLOR isn't set.
void Print(std::wstring const& line, Look look = Look::Plain);

/// Prints a heading and, indented, its lines to the standard error.
void Note(std::wstring const& heading, std::vector<std::wstring> const& lines);

} // namespace Paramtool
