// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/host.h"
#include "edits.h"

#include <memory>

namespace Paramtool {

namespace {

struct Options {
    std::wstring file, from;
    std::vector<std::wstring> settings;
    SaveOptions save;
};

/// A path and a text, or settings, or those of a file.
std::vector<Edit> EditsOf(Options const& options) {
    std::vector<std::wstring> const& settings = options.settings;
    if (!options.from.empty()) {
        if (!settings.empty()) {
            Host::Fail(L"set takes PATH=TEXT or --from, not both");
        }
        InputFile const from(options.from);
        return ReadEdits(BytesOf(from.Path()), from.Name());
    }
    // Two settings both have a "="; a path with one of its own can be said as a setting only, or by --from.
    if (settings.size() == 2 && settings[0].find(L'=') == std::wstring::npos) {
        return {{L"", L"set", settings}};
    }
    std::vector<Edit> edits;
    for (std::wstring const& setting : settings) {
        edits.push_back(ReadSetting(setting, L""));
    }
    if (edits.empty()) {
        Host::Fail(L"set takes PATH=TEXT or --from VALUES");
    }
    return edits;
}

} // namespace

Action DeclareSet(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.TakeMany("SETTING", to->settings,
                  "PATH=TEXT, a parameter and its new value, an attachment's file; or the two as two "
                  "arguments, the text "
                  "behind -- when it begins with a dash and is no number");
    line.Take("--from", to->from, "take the changes from the lines of this file", "VALUES");
    to->save.Declare(line);
    return [to](Context& context) { return Change(context, to->file, EditsOf(*to), to->save); };
}

} // namespace Paramtool
