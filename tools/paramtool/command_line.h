// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "output.h"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace Paramtool {

/// What the program ends with.
enum Status { Same = 0, Different = 1, Failed = 2 };

/// What every command is given.
struct Context {
    std::wstring layout = L"sample";
    Output output;
};

/// Runs a command: gives a status, or throws what made it fail.
using Action = std::function<int(Context& context)>;

/// One thing that a command takes, as help, manual page and completions have it.
struct Parameter {
    std::string name;  ///< "--changed", "FILE"
    std::string value; ///< what follows an option, "LAYOUT"; empty for a flag and behind a positional
    std::string help;
    std::vector<std::string> choices; ///< all that it can be, or none where it can be anything
    bool isRequired = false;
    bool takesMany = false;
};

/// Declares what a command takes. Texts arrive wide; those that aren't UTF-8 are refused. What is filled must
/// live until the command has run.
class CommandLine {
public:
    explicit CommandLine(CLI::App& app) : m_app(app) {}

    /// An argument by its place, in upper case, or an option, with the word for its value.
    void Need(std::string const& name, std::wstring& target, std::string const& help,
              std::string const& value = "");
    void Take(std::string const& name, std::wstring& target, std::string const& help,
              std::string const& value = "");
    void TakeMany(std::string const& name, std::vector<std::wstring>& target, std::string const& help,
                  std::string const& value = "");
    void NeedMany(std::string const& name, std::vector<std::wstring>& target, std::string const& help);
    /// What has to be one of a few words.
    void NeedOneOf(std::string const& name, std::wstring& target, std::vector<std::string> const& choices,
                   std::string const& help, std::string const& value = "");
    void Flag(std::string const& name, bool& target, std::string const& help);

    std::vector<Parameter> m_parameters; ///< all of these, in order

private:
    CLI::Option* Add(Parameter const& parameter, std::vector<std::wstring>& target);
    CLI::Option* Add(Parameter const& parameter, std::wstring& target);

    CLI::App& m_app;
};

} // namespace Paramtool
