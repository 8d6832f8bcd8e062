// SPDX-License-Identifier: Apache-2.0
//
// Two commands of one form: they differ in what an entry is and what can be done with it.

#include "commands.h"
#include "edits.h"

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring file, action, list;
    std::vector<std::wstring> words;
    SaveOptions save;
};

struct Entries {
    std::wstring kind; ///< "profile add" is an edit
    std::vector<std::string> actions;
    std::string actionHelp, wordsHelp;
};

Action Declare(CommandLine& line, Entries const& entries) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.NeedOneOf("ACTION", to->action, entries.actions, entries.actionHelp);
    line.Need("LIST", to->list, "the path of the list");
    line.TakeMany("WORDS", to->words, entries.wordsHelp);
    to->save.Declare(line);
    return [to, kind = entries.kind](Context& context) {
        Edit const edit = MakeEdit(kind + L' ' + to->action, to->list, to->words);
        return Change(context, to->file, {edit}, to->save);
    };
}

} // namespace

Action DeclareProfile(CommandLine& line) {
    return Declare(line, {L"profile",
                          {"add", "copy", "rename", "remove"},
                          "add NAME; copy FROM NAME, where ::DefaultProfile:: is the default profile; rename "
                          "OLD NEW; remove NAME",
                          "the names that the action takes"});
}

Action DeclareItem(CommandLine& line) {
    return Declare(line, {L"item",
                          {"add", "move", "remove"},
                          "add; move FROM TO; remove INDEX",
                          "the indices that the action takes, from 0"});
}

} // namespace Paramtool
