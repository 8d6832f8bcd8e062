// SPDX-License-Identifier: Apache-2.0
#include "commands.h"
#include "common/host.h"
#include "edits.h"

#include <memory>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;
using Kind = MigrationStep::Kind;

struct Options {
    std::wstring file, from, to;
    std::vector<std::wstring> renamings;
    bool isDry = false;
    SaveOptions save;
};

std::vector<Renaming> RenamingsOf(std::vector<std::wstring> const& texts) {
    std::vector<Renaming> renamings;
    for (std::wstring const& text : texts) {
        // The first one: a name with a "=" in it can't be renamed from here.
        std::size_t const at = text.find(L'=');
        if (at == std::wstring::npos) {
            Host::Fail(L'"' + text + L"\" is no OLD=NEW");
        }
        renamings.push_back({text.substr(0, at), text.substr(at + 1)});
    }
    return renamings;
}

// In the order of the kinds, which are the index.
constexpr char const* KindWords[] = {"taken", "converted", "renamed", "dropped", "new", "refused"};

std::wstring LineOf(MigrationStep const& step) {
    std::wstring line = StringConversion::Utf8ToNative(KindWords[static_cast<int>(step.kind)]);
    line += L' ' + step.path + (step.what.empty() ? L"" : L' ' + step.what);
    line += step.newPath.empty() || step.newPath == step.path ? L"" : L" -> " + step.newPath;
    line += step.before.empty() && step.after.empty()
                ? L""
                : L": \"" + step.before + L"\" -> \"" + step.after + L'"';
    return step.reason.empty() ? line : line + L" (" + step.reason + L')';
}

/// Tells each step but what stays as it was; beside a file that goes to the standard output on the standard
/// error. Gives how many lose something.
std::size_t TellSteps(std::vector<MigrationStep> const& steps, bool isBesideFile, Output& output) {
    std::size_t lost = 0;
    Json json = Json::array();
    for (MigrationStep const& step : steps) {
        bool const isLost = step.kind == Kind::Dropped || step.kind == Kind::Refused;
        lost += isLost ? 1 : 0;
        if (step.kind != Kind::Taken && isBesideFile) {
            output.Remark(LineOf(step));
        } else if (step.kind != Kind::Taken) {
            output.Print(LineOf(step), isLost ? Style::Red : Style::Plain);
        }
        json.push_back({{"kind", KindWords[static_cast<int>(step.kind)]},
                        {"path", Utf8(step.path)},
                        {"newPath", Utf8(step.newPath)},
                        {"what", Utf8(step.what)},
                        {"before", Utf8(step.before)},
                        {"after", Utf8(step.after)},
                        {"reason", Utf8(step.reason)}});
    }
    output.m_json["steps"] = std::move(json);
    return lost;
}

int Migrate(Context& context, Options const& options) {
    Output& output = context.output;
    RefuseToReplace({options.from, options.to}, options.save.output);
    LayoutSource const from(options.from), to(options.to);
    ParameterFile const file(output, from, options.file);
    Migration const migration = [&] {
        try {
            return Editing::Migrate(file.m_database, *to.m_layout, RenamingsOf(options.renamings));
        } catch (std::invalid_argument const& error) {
            // By its own type, so that it is told like what the tool itself refuses.
            Host::Fail(StringConversion::Utf8ToNative(error.what()));
        }
    }();
    std::wstring const target =
        options.save.output.empty() && file.m_input.IsStandard() ? L"-" : options.save.output;
    std::size_t const lost = TellSteps(migration.steps, target == L"-" && !options.isDry, output);
    // No reason against the migration: what the new layout objects to is kept, and for its user to mend.
    for (Finding const& finding : Validate(migration.database)) {
        if (finding.severity == Severity::Error) {
            Message message = MessageOf(target.empty() ? file.m_input.Name() : target, finding);
            message.severity = Severity::Warning;
            output.Tell(message);
        }
    }
    if (options.isDry) {
        return lost == 0 && file.m_passedOver == 0 ? Same : Different;
    }
    if (lost != 0 && !options.save.isForced) {
        Host::Fail(file.m_input.Name() + L" is not migrated, because of what is dropped or refused; --force "
                                         L"accepts it, --dry-run only shows it");
    }
    SaveAnew(file, migration.database, {}, options.save, output);
    return Same;
}

} // namespace

Action DeclareMigrate(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.Need("FILE", to->file, "a parameter file, generic or of machine parameters");
    line.Need("--from", to->from, "the layout that the file was made with", "LAYOUT");
    line.Need("--to", to->to, "the layout that it is to have", "LAYOUT");
    line.TakeMany("--rename", to->renamings,
                  "what stood at OLD stands at NEW: names from below ProfileEditor, joined by /", "OLD=NEW");
    line.Flag("--dry-run", to->isDry, "only show what would become of each value");
    to->save.Declare(line);
    return [to](Context& context) { return Migrate(context, *to); };
}

} // namespace Paramtool
