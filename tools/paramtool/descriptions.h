// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "command_table.h"

#include <functional>
#include <string>
#include <vector>

namespace Paramtool {

/// What stands in front of the table of commands in help and manual.
inline constexpr char const* About =
    "Shows, checks, compares, changes and converts the parameter files of build "
    "processors, their layouts and their build tickets.";
/// And behind it.
inline constexpr char const* Notes[] = {
    "A file called - is the standard input, or output.",
    ("Exit status: 0; 1 when a check found something, a diff or conversion a difference, or a query by "
     "--contains nothing; 2 for wrong arguments and for what can't be done."),
    "Colours only on a terminal, and not when NO_COLOR is set.",
};

/// --layout, where the command takes it, and --json.
void DeclareCommon(CommandLine& line, bool takesLayout, Context& context);

/// All that a command takes.
std::vector<Parameter> ParametersOf(Command const& command);

/// Prints a text, which goes into the document as "text" where one is wanted.
void PrintText(Output& output, std::function<void()> const& print);

} // namespace Paramtool
