// SPDX-License-Identifier: Apache-2.0
//
// The manual page, in the words of the table of commands. tools/paramtool/paramtool.1 is what this prints.

#include "descriptions.h"

#include <iostream>

namespace Paramtool {

namespace {

/// A text in which nothing is a command of the page's language.
std::string Escaped(std::string const& text) {
    std::string escaped;
    for (char const c : text) {
        escaped += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    }
    return !escaped.empty() && (escaped.front() == '.' || escaped.front() == '\'') ? "\\&" + escaped
                                                                                   : escaped;
}

std::string Name(Parameter const& parameter) {
    bool const isOption = parameter.name.front() == '-';
    std::string name =
        isOption ? "\\fB" + Escaped(parameter.name) + "\\fR" : "\\fI" + parameter.name + "\\fR";
    name += parameter.value.empty() ? "" : " \\fI" + Escaped(parameter.value) + "\\fR";
    return name + (parameter.takesMany ? "..." : "");
}

void PrintCommand(Command const& command) {
    std::vector<Parameter> const parameters = ParametersOf(command);
    std::cout << ".SS " << command.name << "\n.B paramtool " << command.name << '\n';
    for (Parameter const& parameter : parameters) {
        std::cout << (parameter.isRequired ? Name(parameter) : '[' + Name(parameter) + ']') << '\n';
    }
    std::cout << ".PP\n" << Escaped(command.purpose) << ".\n";
    for (Parameter const& parameter : parameters) {
        std::cout << ".TP\n" << Name(parameter) << '\n' << Escaped(parameter.help) << '\n';
    }
    std::cout << ".PP\nExample:\n.PP\n.RS\nparamtool " << Escaped(command.example) << "\n.RE\n";
}

// Without a date and whatever else differs from run to run: the page is kept with the sources, and compared
// with what this prints.
void PrintManual() {
    std::cout << ".TH PARAMTOOL 1 \"\" \"paramtool " PARAMTOOL_VERSION "\" \"User Commands\"\n"
              << ".SH NAME\nparamtool \\- looks after parameter files\n"
              << ".SH SYNOPSIS\n.B paramtool\n[\\fB\\-\\-layout\\fR \\fILAYOUT\\fR]\n[\\fB\\-\\-json\\fR]\n"
              << "\\fICOMMAND\\fR ...\n.br\n.B paramtool \\-\\-version\n.br\n.B paramtool \\-\\-help\n"
              << ".SH DESCRIPTION\n"
              << Escaped(About) << '\n';
    for (char const* note : Notes) {
        std::cout << ".PP\n" << Escaped(note) << '\n';
    }
    std::cout << ".SH COMMANDS\n";
    for (Command const& command : Commands) {
        PrintCommand(command);
    }
}

} // namespace

Action DeclareManual(CommandLine&) {
    return [](Context& context) {
        PrintText(context.output, PrintManual);
        return Same;
    };
}

} // namespace Paramtool
