// SPDX-License-Identifier: Apache-2.0
//
// A tool for people who look after parameter files: it shows, checks, compares, changes and converts them.
// Here stands only the command line; each command has a function in look.cpp, compare.cpp or set.cpp, and
// these stand on parameter_source.cpp (a file of either format), layout_source.cpp (a layout from anywhere)
// and places.cpp (a database as a list of facts).

#include "commands.h"
#include "common/host.h"

#include <zantrel/zantrel.h>

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace {

using namespace Paramtool;

/// An argument as the wide text that the library takes.
std::wstring TextOf(std::string const& argument) {
    std::wstring const text = StringConversion::Utf8ToNative(argument);
    if (StringConversion::NativeToUtf8(text) != argument) {
        Host::Fail(L"An argument is not UTF-8: " + text);
    }
    return text;
}

CLI::Option* Add(CLI::App& app, char const* name, std::wstring& target, char const* help) {
    return app
        .add_option_function<std::string>(
            name, [&target](std::string const& argument) { target = TextOf(argument); }, help)
        ->type_name("");
}

void AddFile(CLI::App& app, Arguments& to) {
    Add(app, "FILE", to.file, "a parameter file, generic or of machine parameters")->required();
}

void DeclareShow(CLI::App& app, Arguments& to) {
    AddFile(app, to);
    app.add_flag("--changed", to.changed, "only what differs from the layout's defaults");
}

void DeclareQuery(CLI::App& app, Arguments& to) {
    AddFile(app, to);
    CLI::Option* path = Add(app, "PATH", to.path, "the parameter whose value is printed");
    Add(app, "--contains", to.contains,
        "list the parameters with this text in their path; without either, all")
        ->type_name("TEXT")
        ->excludes(path);
}

void DeclareSet(CLI::App& app, Arguments& to) {
    AddFile(app, to);
    Add(app, "PATH", to.path, "the parameter")->required();
    Add(app, "TEXT", to.text,
        "its new value, an attachment's file; behind -- when it begins with a dash and is no number")
        ->required();
    Add(app, "--output", to.second, "write here instead of to FILE")->type_name("OTHER");
    app.add_flag("--force", to.force, "accept losses, and a value that the layout objects to");
}

void DeclareDiff(CLI::App& app, Arguments& to) {
    Add(app, "A", to.file, "a parameter file")->required();
    Add(app, "B", to.second, "another, in either format")->required();
}

void DeclareConvert(CLI::App& app, Arguments& to) {
    Add(app, "INPUT", to.file, "a parameter file, or a layout for the formats of layouts")->required();
    Add(app, "OUTPUT", to.second, "the file to write")->required();
    Add(app, "--to", to.format, "generic or machine for parameters, meta or template for layouts")
        ->type_name("FORMAT")
        ->required()
        ->check(CLI::IsMember({"generic", "machine", "meta", "template"}).description(""));
}

struct Command {
    char const* name;
    char const* purpose;
    char const* example;
    void (*declare)(CLI::App& app, Arguments& arguments);
    int (*run)(Arguments const& arguments);
};

constexpr Command Commands[] = {
    {"show", "Shows the tree of a file with values, units and flags", "show machine.xml --changed",
     DeclareShow, Show},
    {"check", "Says what in a file doesn't fit the layout", "check machine.xml --layout layout.xml", AddFile,
     Check},
    {"query", "Prints the value at a path, or lists paths",
     "query machine.xml 'Categories_Category[Titan]_Slicing_Profile::Default::_SliceThickness'", DeclareQuery,
     Query},
    {"set", "Changes a value, in the format of the file",
     "set machine.xml GenericParameters_TestGroup_SomeDouble 1.5 --output new.xml", DeclareSet, Set},
    {"diff", "Compares two files path by path", "diff old.xml new.xml", DeclareDiff, Diff},
    {"convert", "Writes a file in another format and notes what that can't carry",
     "convert machine.xml for_driver.xml --to machine", DeclareConvert, Convert},
};

int Run(Host::Arguments const& words) {
    CLI::App app("Shows, checks, compares, changes and converts the parameter files of build processors.",
                 "paramtool");
    app.footer(
        "Example: paramtool show machine.xml\n"
        "Exit status: 0; 1 when a check found the file invalid, a diff or conversion a difference, or\n"
        "a query by --contains nothing; 2 for wrong arguments and for what can't be done.\n"
        "Colours only on a terminal, and not when NO_COLOR is set.");
    app.require_subcommand(1);
    app.fallthrough();

    Arguments arguments;
    Add(app, "--layout", arguments.layout,
        "a layout meta file or property template, or \"sample\" for the sample layout, the default")
        ->type_name("LAYOUT");
    int status = Failed;
    for (Command const& command : Commands) {
        CLI::App* sub = app.add_subcommand(command.name, command.purpose);
        sub->footer(std::string("Example: paramtool ") + command.example);
        command.declare(*sub, arguments);
        sub->callback([&command, &status, &arguments] { status = command.run(arguments); });
    }
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // it takes them from the end
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? Same : Failed; // prints the help that was asked for, or what is wrong
    }
    return status;
}

} // namespace

int main(int argc, char** argv) { return Host::Main("paramtool", argc, argv, Run, Failed); }
