// SPDX-License-Identifier: Apache-2.0
//
// A tool for people who look after parameter files, layouts and tickets. Here stands only how the words of a
// command line find their command; commands.h has the table of these, and commands/ a file for each. They
// stand on parameter_source.h (a file of either format), layout_source.h (a layout from anywhere), files.h
// (what a file is) and output.h (lines for people, or one document for programs).

#include "commands.h"
#include "common/host.h"
#include "nearest.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace Paramtool;

struct Run {
    Context context;
    std::string command; ///< that was found
    int status = Failed;
};

void AddCommon(CommandLine& line, bool takesLayout, Run& run) {
    if (takesLayout) {
        line.Take("--layout", run.context.layout,
                  "a layout meta file or property template, or \"sample\" for the sample layout, the default",
                  "LAYOUT");
    }
    line.Flag("--json", run.context.output.m_isJson, "one JSON document instead of lines");
}

/// The app of the words in front of the last: the program's, or a group's.
CLI::App& GroupOf(CLI::App& app, std::string& name) {
    std::size_t const end = name.find(' ');
    if (end == std::string::npos) {
        return app;
    }
    std::string const group = name.substr(0, end);
    name.erase(0, end + 1);
    for (CLI::App* const known :
         app.get_subcommands([&](CLI::App* sub) { return sub->get_name() == group; })) {
        return *known;
    }
    CLI::App* const made = app.add_subcommand(group, "Of a " + group + ":");
    made->require_subcommand(1);
    return *made;
}

void Declare(CLI::App& app, Command const& command, Run& run) {
    std::string name = command.name;
    CLI::App* const sub = GroupOf(app, name).add_subcommand(name, command.purpose);
    sub->footer(std::string("Example: paramtool ") + command.example);
    CommandLine line(*sub);
    Action const action = command.declare(line);
    AddCommon(line, command.takesLayout, run);
    sub->callback([&command, &run, action] {
        run.command = command.name;
        run.status = action(run.context);
    });
}

/// Words that stand where a command should.
[[noreturn]] void FailWithoutCommand(CLI::App const& app) {
    CLI::App const* group = &app;
    while (!group->get_subcommands().empty()) {
        group = group->get_subcommands().front();
    }
    std::vector<std::wstring> known;
    for (CLI::App const* sub : group->get_subcommands({})) {
        known.push_back(StringConversion::Utf8ToNative(sub->get_name()));
    }
    std::string const where = group == &app ? "paramtool" : "paramtool " + group->get_name();
    std::wstring const help = L"; " + StringConversion::Utf8ToNative(where) + L" --help lists them";
    for (std::string const& word : app.remaining(true)) {
        if (word.empty() || word.front() != '-') {
            std::wstring const wide = StringConversion::Utf8ToNative(word);
            Host::Fail(L"There is no command \"" + wide + L"\"" + Suggestion(wide, known) + help);
        }
    }
    Host::Fail(L"A command is wanted" + help);
}

int Parse(CLI::App& app, Host::Arguments const& words, Run& run) {
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // it takes them from the end
    } catch (CLI::RequiredError const& error) {
        if (run.command.empty() && std::string(error.what()).find("ubcommand") != std::string::npos) {
            FailWithoutCommand(app);
        }
        return app.exit(error) == 0 ? Same : Failed;
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? Same : Failed; // prints the help that was asked for, or what is wrong
    }
    return run.status;
}

int RunWords(Host::Arguments const& words) {
    CLI::App app(
        "Shows, checks, compares, changes and converts the parameter files of build processors, their "
        "layouts and their build tickets.",
        "paramtool");
    app.footer(
        "Example: paramtool show machine.xml\n"
        "A file called - is the standard input, or output.\n"
        "Exit status: 0; 1 when a check found something, a diff or conversion a difference, or a query\n"
        "by --contains nothing; 2 for wrong arguments and for what can't be done.\n"
        "Colours only on a terminal, and not when NO_COLOR is set.");
    app.set_version_flag("--version", "paramtool " PARAMTOOL_VERSION, "print the version and end");
    app.require_subcommand(1);

    Run run;
    CommandLine common(app);
    AddCommon(common, true, run);
    for (Command const& command : Commands) {
        Declare(app, command, run);
    }
    std::string error;
    int status = Failed;
    try {
        status = Parse(app, words, run);
    } catch (std::exception const& failure) {
        error = failure.what();
    }
    if (!run.command.empty()) {
        run.context.output.Finish(run.command, status, error);
    }
    if (!error.empty()) {
        throw std::runtime_error(error);
    }
    return status;
}

} // namespace

int main(int argc, char** argv) { return Host::Main("paramtool", argc, argv, RunWords, Failed); }
