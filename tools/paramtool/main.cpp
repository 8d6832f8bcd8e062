// SPDX-License-Identifier: Apache-2.0
//
// A tool for people who look after parameter files, layouts and tickets. Here stands only how the words of a
// command line find their command; command_table.h has the table of these, commands/ a file for each. They
// stand on parameter_source.h (a file of either format), layout_source.h (a layout from anywhere), files.h
// (what a file is) and output.h (lines for people, or one document for programs).

#include "common/host.h"
#include "descriptions.h"
#include "nearest.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace {

using namespace Paramtool;

struct Run {
    Context context;
    std::string command; ///< that was found
    int status = Failed;
};

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
    DeclareCommon(line, command.takesLayout, run.context);
    // Run from within the parse. Which command it is is set first, so that the document of one that fails
    // names it.
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
            std::wstring const nearest = Suggestion(wide, known);
            Host::Fail(L"There is no command \"" + wide + L"\"" + (nearest.empty() ? help : nearest));
        }
    }
    Host::Fail(L"A command is wanted" + help);
}

[[noreturn]] void FailToParse(CLI::ParseError const& error) {
    Host::Fail(StringConversion::Utf8ToNative(error.what()) + L"; --help says what is wanted");
}

int Parse(CLI::App& app, Host::Arguments const& words, Run& run) {
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // it takes them from the end
    } catch (CLI::RequiredError const& error) {
        // A word that is no command leaves a group without one: the parser says only that one is wanted, and
        // not that it has met the word. It has no error of its own for that but the text.
        if (run.command.empty() && std::string(error.what()).find("ubcommand") != std::string::npos) {
            FailWithoutCommand(app);
        }
        FailToParse(error);
    } catch (CLI::Success const& error) {
        return app.exit(error); // prints the help that was asked for
    } catch (CLI::ParseError const& error) {
        FailToParse(error);
    }
    return run.status;
}

int RunWords(Host::Arguments const& words) {
    CLI::App app(About, "paramtool");
    std::string footer = "Example: paramtool show machine.xml";
    for (char const* note : Notes) {
        footer += std::string("\n") + note;
    }
    app.footer(footer);
    app.set_version_flag("--version", "paramtool " PARAMTOOL_VERSION, "print the version and end");
    app.require_subcommand(1);

    Run run;
    CommandLine common(app);
    DeclareCommon(common, true, run.context);
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
    // Of words that are wrong there may be no command yet, and nobody has taken the flag.
    bool const isWrong = run.command.empty() && !error.empty();
    run.context.output.m_isJson = run.context.output.m_isJson ||
                                  (isWrong && std::find(words.begin(), words.end(), "--json") != words.end());
    // The document is printed also of a failure, which is then thrown on, for the line on the standard error.
    if (!run.command.empty() || isWrong) {
        run.context.output.Finish(run.command, status, error);
    }
    if (!error.empty()) {
        throw std::runtime_error(error);
    }
    return status;
}

} // namespace

int main(int argc, char** argv) { return Host::Main("paramtool", argc, argv, RunWords, Failed); }
