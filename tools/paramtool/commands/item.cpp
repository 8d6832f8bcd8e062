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

Action DeclareItem(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.NeedOneOf("ACTION", to->action, {"add", "move", "remove"}, "add; move FROM TO; remove INDEX");
    line.Need("LIST", to->list, "the path of the list");
    line.TakeMany("WORDS", to->words, "the indices that the action takes, from 0");
    to->save.Declare(line);
    return [to](Context& context) {
        return Change(context, to->file, {MakeEdit(L"item " + to->action, to->list, to->words)}, to->save);
    };
}

} // namespace Paramtool
