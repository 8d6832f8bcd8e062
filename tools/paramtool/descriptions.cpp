// SPDX-License-Identifier: Apache-2.0
#include "descriptions.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <sstream>

namespace Paramtool {

void DeclareCommon(CommandLine& line, bool takesLayout, Context& context) {
    if (takesLayout) {
        line.Take("--layout", context.layout,
                  "a layout meta file or property template, or \"sample\" for the sample layout, the default",
                  "LAYOUT");
    }
    line.Flag("--json", context.output.m_isJson, "one JSON document instead of lines");
}

void PrintText(Output& output, std::function<void()> const& print) {
    if (!output.m_isJson) {
        return print();
    }
    std::ostringstream text;
    std::streambuf* const terminal = std::cout.rdbuf(text.rdbuf());
    print();
    std::cout.rdbuf(terminal);
    output.m_json["text"] = text.str();
}

/// By declaring the command to a parser that is never run, so that descriptions have no list of their own
/// that could fall behind. What the command would fill lives in what `declare` gives, and ends with it; no
/// parameter refers to it.
std::vector<Parameter> ParametersOf(Command const& command) {
    CLI::App app;
    Context context;
    CommandLine line(app);
    command.declare(line);
    DeclareCommon(line, command.takesLayout, context);
    return std::move(line.m_parameters);
}

} // namespace Paramtool
