// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "commands.h"

namespace Paramtool {

/// A command, from which help, manual page and completions are made.
struct Command {
    char const* name; ///< one word, or a group and a word: "layout lint"
    char const* purpose;
    char const* example; ///< what follows "paramtool"
    Action (*declare)(CommandLine& line);
    bool takesLayout = true; ///< --layout, which parameter files are read by
};

inline constexpr Command Commands[] = {
    {"show", "Shows the tree of a file with values, units and flags", "show machine.xml --changed",
     DeclareShow},
    {"query", "Prints the value at a path, or lists paths",
     "query machine.xml 'Categories_Category[Titan]_Slicing_Profile::Default::_SliceThickness'",
     DeclareQuery},
    {"check", "Says what in files doesn't fit the layout", "check machine.xml --layout layout.xml",
     DeclareCheck},
    {"set", "Changes values, all or none, in the format of the file",
     "set machine.xml GenericParameters_TestGroup_SomeDouble=1.5", DeclareSet},
    {"profile", "Adds, copies, renames or removes a profile",
     "profile machine.xml copy Categories Titan 'Titan fine'", DeclareProfile},
    {"item", "Adds, moves or removes an item of a list",
     "item machine.xml add GenericParameters_TestGroup_SomeComplexGroup_ListOfDoubles", DeclareItem},
    {"diff", "Compares two files path by path", "diff old.xml new.xml", DeclareDiff},
    {"convert", "Writes a file in another format and notes what that can't carry",
     "convert machine.xml for_driver.xml --to machine", DeclareConvert},
    {"export", "Writes all values as a table", "export machine.xml --to csv --output values.csv",
     DeclareExport},
    {"import", "Takes the values of a table", "import machine.xml values.csv", DeclareImport},
    {"new", "Writes a file with the layout's defaults", "new machine.xml --layout layout.xml", DeclareNew},
    {"extract", "Writes the bytes of an attachment",
     "extract machine.xml GenericParameters_TestGroup_SomeAttachment part.stl", DeclareExtract},
    {"migrate", "Takes the values of a file to another layout, and says what becomes of each",
     "migrate machine.xml --from old.xml --to new.xml --rename Materials/Power=Materials/Laser/Power "
     "--dry-run",
     DeclareMigrate, false},
    {"layout lint", "Says what is wrong with a layout", "layout lint layout.xml", DeclareLayoutLint, false},
    {"layout diff", "Compares two layouts node by node", "layout diff old.xml new.xml", DeclareLayoutDiff,
     false},
    {"layout schema", "Writes an XML schema of the layout's parameter files",
     "layout schema layout.xml -o machine.xsd", DeclareLayoutSchema, false},
    {"layout page", "Writes a page on which a layout can be seen and tried",
     "layout page layout.xml -o page.html --values machine.xml", DeclareLayoutPage, false},
    {"ticket show", "Lists the properties of a build ticket", "ticket show ticket.xml", DeclareTicketShow,
     false},
    {"ticket diff", "Compares two build tickets", "ticket diff old.xml new.xml", DeclareTicketDiff, false},
    {"ticket effective", "Says what counts for a part, and where it comes from",
     "ticket effective ticket.xml --layout layout.xml --part 7d4a38e0-0b0c-4d63-8d0c-5c4d2c0a3f10",
     DeclareTicketEffective},
    {"completion", "Prints the completion for a shell", "completion bash", DeclareCompletion, false},
    {"manual", "Prints the manual page", "manual", DeclareManual, false},
};

} // namespace Paramtool
