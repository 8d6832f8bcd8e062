// SPDX-License-Identifier: Apache-2.0
//
// The way back of export: what differs from the file is set, and the profiles and items that a path names are
// added where they are missing.

#include "commands.h"
#include "edits.h"
#include "value_tables.h"

#include <memory>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

struct Options {
    std::wstring file, values;
    SaveOptions save;
};

/// The list whose entry a path names that goes on with "[" at `bracket`. Names may hold "_" themselves.
std::optional<Place> ListBefore(ParameterDatabase& database, std::wstring const& path, std::size_t bracket) {
    // From the right, by which the innermost list is tried first.
    for (std::size_t end = path.rfind(L'_', bracket); end != std::wstring::npos && end != 0;
         end = path.rfind(L'_', end - 1)) {
        std::optional<Place> list = Place::Find(database, path.substr(0, end));
        if (list && (list->GetKind() == PlaceKind::List || list->GetKind() == PlaceKind::ProfileList) &&
            list->GetLayoutNode()->m_nodeName == path.substr(end + 1, bracket - end - 1)) {
            return list;
        }
    }
    return std::nullopt;
}

/// What adds the outermost entry that a path names and the database lacks; nothing when none is missing.
std::optional<Edit> AdditionFor(ParameterDatabase& database, ValueRow const& row) {
    std::wstring const& path = row.path;
    for (std::size_t open = path.find(L'['); open != std::wstring::npos; open = path.find(L'[', open + 1)) {
        // A bracket in the name of a profile is only found out by looking for the list in front of it; one
        // that closes belongs to the step where the next step or the end follows.
        std::size_t const close = path.find(L"]_", open);
        std::size_t const end = close != std::wstring::npos ? close : path.size() - 1;
        std::optional<Place> const list = ListBefore(database, path, open);
        if (list && end > open && path[end] == L']' && !Place::Find(database, path.substr(0, end + 1))) {
            if (list->GetKind() == PlaceKind::List) {
                return Edit{row.where, L"item add", {list->GetPath()}};
            }
            return Edit{row.where, L"profile add", {list->GetPath(), path.substr(open + 1, end - open - 1)}};
        }
    }
    return std::nullopt;
}

void AddMissing(ParameterFile& file, ValueRow const& row, std::vector<Edit>& done, Output& output) {
    std::size_t const depth = row.path.size(); // that of a path is less, so that this ends
    for (std::size_t i = 0; i < depth && !Place::Find(file.m_database, row.path); ++i) {
        std::optional<Edit> const addition = AdditionFor(file.m_database, row);
        if (!addition) {
            return;
        }
        // At once, as the next one may stand in it.
        Apply({*addition}, file, false, output);
        done.push_back(*addition);
    }
}

int Import(Context& context, Options const& options) {
    RefuseToReplace({options.values, context.layout}, options.save.output);
    LayoutSource const source(context.layout);
    ParameterFile file(context.output, source, options.file);
    InputFile const values(options.values);
    std::vector<Edit> done, settings;
    for (ValueRow const& row : ReadValues(BytesOf(values.Path()), values.Name())) {
        AddMissing(file, row, done, context.output);
        std::optional<Place> const place = Place::Find(file.m_database, row.path);
        // What is as it was needs no leave, and of an attachment the table has no more than its name.
        if (!place || TextOf(place->GetCursor()) != row.text) {
            settings.push_back({row.where, L"set", {row.path, row.text}});
        }
    }
    Apply(settings, file, options.save.isForced, context.output);
    done.insert(done.end(), settings.begin(), settings.end());
    Save(file, done, options.save, context.output);
    context.output.m_json["changes"] = done.size();
    return Same;
}

} // namespace

Action DeclareImport(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.Need("VALUES", to->values, "a table as export makes it");
    to->save.Declare(line);
    return [to](Context& context) { return Import(context, *to); };
}

} // namespace Paramtool
