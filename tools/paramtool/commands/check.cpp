// SPDX-License-Identifier: Apache-2.0
//
// To look at: IsValidParameterFile, whose report tells where something is unknown, missing or doesn't parse;
// Validate, which holds values against the layout.

#include "commands.h"
#include "common/host.h"
#include "parameter_source.h"

#include <memory>

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

struct Options {
    std::vector<std::wstring> files;
    bool isStrict = false;
};

/// What was found so far, by severity.
struct Counts {
    std::size_t files = 0, failedFiles = 0, errors = 0, warnings = 0, notes = 0;
};

/// One file's findings, told as they come.
class FileCheck {
public:
    FileCheck(Output& output, LayoutSource const& layout, InputFile const& file)
        : m_output(output), m_layout(layout), m_file(file) {}

    Counts Run() {
        FileSort const sort = SortOf(m_file.Path());
        std::wstring const strange = StrangeRoot(m_layout, m_file, sort);
        if (!strange.empty()) {
            Tell({Severity::Error, m_file.Name(), 1, 1, strange, sort.root});
            return m_counts; // nothing of it fits, which one line says better than one for each element
        }
        bool const isMachine = sort.kind == FileKind::MachineParameters;
        CheckStructure(isMachine);
        CheckValues(isMachine);
        return m_counts;
    }

private:
    void Tell(Message const& message) {
        (message.severity == Severity::Error     ? m_counts.errors
         : message.severity == Severity::Warning ? m_counts.warnings
                                                 : m_counts.notes)++;
        m_output.PrintFinding(message);
    }

    void CheckStructure(bool isMachine) {
        ParameterFileValidityResult result;
        ReadReport report;
        bool const isRead =
            isMachine ? KlvrProperties::IsValidParameterFile(*m_layout.m_layout, m_file.Path(), {}, &result,
                                                             &report)
                      : IsValidParameterFile(*m_layout.m_layout, m_file.Path(), {}, &result, &report);
        if (!isRead && result.m_messages.empty()) {
            Host::FailToRead(m_file.Name(), report);
        }
        m_counts.errors += TellPassedOver(m_output, m_file.Name(), report, &Output::PrintFinding);
    }

    void CheckValues(bool isMachine) {
        // Read once more, and without a report: what doesn't fit was told by the look at the structure, which
        // keeps no values.
        ParameterDatabase database(m_layout.m_layout.get());
        isMachine ? KlvrProperties::ReadFile(database, m_file.Path()) : ReadFile(database, m_file.Path());
        std::vector<Finding> const findings = Validate(database);
        std::vector<std::wstring> paths;
        for (Finding const& finding : findings) {
            paths.push_back(finding.path);
        }
        std::vector<ValuePlace> places(paths.size());
        if (!paths.empty()) {
            auto const find = isMachine ? &KlvrProperties::FindValuePlaces : &FindValuePlaces;
            places = find(*m_layout.m_layout, m_file.Path(), paths);
        }
        for (std::size_t i = 0; i < findings.size(); ++i) {
            Message message = MessageOf(m_file.Name(), findings[i]);
            message.line = places[i].line; // none for what the file doesn't mention
            message.column = places[i].column;
            Tell(message);
        }
    }

    Output& m_output;
    LayoutSource const& m_layout;
    InputFile const& m_file;
    Counts m_counts;
};

void Add(Counts& all, Counts const& one, bool isStrict) {
    ++all.files;
    all.failedFiles += one.errors != 0 || (isStrict && one.warnings + one.notes != 0) ? 1 : 0;
    all.errors += one.errors;
    all.warnings += one.warnings;
    all.notes += one.notes;
}

std::wstring Counted(std::size_t count, std::wstring const& word) {
    return std::to_wstring(count) + L' ' + word + (count == 1 ? L"" : L"s");
}

int Check(Context& context, Options const& options) {
    Output& output = context.output;
    LayoutSource const source(context.layout);
    Counts all;
    Progress progress(options.files.size());
    for (std::wstring const& name : options.files) {
        progress.Step(name);
        Counts counts;
        try {
            InputFile const file(name);
            counts = FileCheck(output, source, file).Run();
        } catch (std::runtime_error const& error) {
            // Alone a file that can't be read is a failure of the command; among many it is a finding about
            // one, and the others are still checked.
            if (options.files.size() == 1) {
                throw;
            }
            output.PrintFinding(
                {Severity::Error, L"", 0, 0, StringConversion::Utf8ToNative(error.what()), L""});
            counts.errors = 1;
        }
        Add(all, counts, options.isStrict);
    }
    if (all.files > 1 || all.errors + all.warnings + all.notes != 0) {
        output.Print(Counted(all.errors, L"error") + L", " + Counted(all.warnings, L"warning") + L", " +
                     Counted(all.notes, L"note") + L" in " + Counted(all.files, L"file"));
    }
    output.m_json["counts"] = {{"files", all.files},
                               {"failedFiles", all.failedFiles},
                               {"errors", all.errors},
                               {"warnings", all.warnings},
                               {"notes", all.notes}};
    return all.failedFiles == 0 ? Same : Different;
}

} // namespace

Action DeclareCheck(CommandLine& line) {
    auto const to = std::make_shared<Options>();
    line.NeedMany("FILE", to->files, "parameter files, generic or of machine parameters");
    line.Flag("--strict", to->isStrict, "let warnings and notes count as errors");
    return [to](Context& context) { return Check(context, *to); };
}

} // namespace Paramtool
