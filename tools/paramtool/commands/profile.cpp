// SPDX-License-Identifier: Apache-2.0
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

} // namespace

Action DeclareProfile(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.NeedOneOf("ACTION", to->action, {"add", "copy", "rename", "remove"},
                   "add NAME; copy FROM NAME, where ::DefaultProfile:: is the default profile; rename OLD "
                   "NEW; remove NAME");
    line.Need("LIST", to->list, "the path of the list");
    line.TakeMany("WORDS", to->words, "the names that the action takes");
    to->save.Declare(line);
    return [to](Context& context) {
        return Change(context, to->file, {MakeEdit(L"profile " + to->action, to->list, to->words)}, to->save);
    };
}

} // namespace Paramtool
