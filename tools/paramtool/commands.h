// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "command_line.h"

namespace Paramtool {

// Each declares what its command takes and gives what runs it; see commands/ for a file each.
Action DeclareShow(CommandLine& line);
Action DeclareQuery(CommandLine& line);
Action DeclareCheck(CommandLine& line);
Action DeclareSet(CommandLine& line);
Action DeclareProfile(CommandLine& line);
Action DeclareItem(CommandLine& line);
Action DeclareDiff(CommandLine& line);
Action DeclareConvert(CommandLine& line);

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
};

} // namespace Paramtool
