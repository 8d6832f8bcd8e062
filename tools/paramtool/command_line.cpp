// SPDX-License-Identifier: Apache-2.0
#include "command_line.h"

#include "common/host.h"

#include <CLI/CLI.hpp>

namespace Paramtool {

// The words of each command are kept beside the parser, since help, manual page and completions are made from
// the same declarations: what is declared is described.

namespace {

/// An argument as the wide text that the library takes.
std::wstring TextOf(std::string const& argument) {
    std::wstring const text = StringConversion::Utf8ToNative(argument);
    // What isn't UTF-8 would come back otherwise: a path that nobody has asked for.
    if (StringConversion::NativeToUtf8(text) != argument) {
        Host::Fail(L"An argument is not UTF-8: " + text);
    }
    return text;
}

} // namespace

CLI::Option* CommandLine::Add(Parameter const& parameter, std::wstring& target) {
    m_parameters.push_back(parameter);
    CLI::Option* const option =
        m_app
            .add_option_function<std::string>(
                parameter.name, [&target](std::string const& argument) { target = TextOf(argument); },
                parameter.help)
            ->type_name(parameter.value)
            ->required(parameter.isRequired)
            ->take_last();
    if (!parameter.choices.empty()) {
        option->check(CLI::IsMember(parameter.choices).description(""));
    }
    return option;
}

CLI::Option* CommandLine::Add(Parameter const& parameter, std::vector<std::wstring>& target) {
    m_parameters.push_back(parameter);
    m_parameters.back().takesMany = true;
    CLI::Option* const option = m_app
                                    .add_option_function<std::vector<std::string>>(
                                        parameter.name,
                                        [&target](std::vector<std::string> const& arguments) {
                                            for (std::string const& argument : arguments) {
                                                target.push_back(TextOf(argument));
                                            }
                                        },
                                        parameter.help)
                                    ->type_name(parameter.value)
                                    ->required(parameter.isRequired);
    if (!parameter.value.empty()) {
        option->allow_extra_args(false); // one a time: what follows belongs to the command
    }
    return option;
}

void CommandLine::Need(std::string const& name, std::wstring& target, std::string const& help,
                       std::string const& value) {
    Add({name, value, help, {}, true, false}, target);
}

void CommandLine::Take(std::string const& name, std::wstring& target, std::string const& help,
                       std::string const& value) {
    Add({name, value, help, {}, false, false}, target);
}

void CommandLine::TakeMany(std::string const& name, std::vector<std::wstring>& target,
                           std::string const& help, std::string const& value) {
    Add({name, value, help, {}, false, true}, target);
}

void CommandLine::NeedMany(std::string const& name, std::vector<std::wstring>& target,
                           std::string const& help) {
    Add({name, "", help, {}, true, true}, target);
}

void CommandLine::NeedOneOf(std::string const& name, std::wstring& target,
                            std::vector<std::string> const& choices, std::string const& help,
                            std::string const& value) {
    Add({name, value, help, choices, true, false}, target);
}

void CommandLine::Flag(std::string const& name, bool& target, std::string const& help) {
    m_parameters.push_back({name, "", help, {}, false, false});
    m_app.add_flag(name, target, help);
}

} // namespace Paramtool
