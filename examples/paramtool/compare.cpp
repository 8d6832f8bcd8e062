// SPDX-License-Identifier: Apache-2.0
//
// The commands that compare: two files, or one with what another format makes of it. Nothing is known here of
// what a format can carry: a conversion is read back, and what differs is the loss.

#include "commands.h"
#include "common/host.h"
#include "files.h"
#include "layout_source.h"
#include "parameter_source.h"
#include "terminal.h"

#include <filesystem>

namespace Paramtool {

namespace {

struct Conversion {
    bool isReadWhole;
    std::vector<Change> losses;
};

Conversion ConvertParameters(Arguments const& arguments, ParameterFormat format) {
    LayoutSource const source(arguments.layout);
    ParameterFile file(*source.m_layout, arguments.file);
    return {NotePassedOver(file.m_passedOver), file.Write(arguments.second, format)};
}

Conversion ConvertLayout(Arguments const& arguments, LayoutFormat format) {
    LayoutSource const source(arguments.file);
    bool const isReadWhole = NotePassedOver(LinesOf(arguments.file, source.m_report));
    std::wstring const output =
        Host::Wide(std::filesystem::absolute(arguments.second)); // a file, even "sample"
    source.Write(output, format);
    return {isReadWhole, Differences(source.Facts(), LayoutSource(output).Facts())};
}

} // namespace

int Diff(Arguments const& arguments) {
    LayoutSource const source(arguments.layout);
    ParameterFile first(*source.m_layout, arguments.file);
    ParameterFile second(*source.m_layout, arguments.second);
    NotePassedOver(first.m_passedOver);
    NotePassedOver(second.m_passedOver);
    std::vector<Change> const changes = Differences(FactsOf(first.m_database), FactsOf(second.m_database));
    for (Change const& change : changes) {
        Print(change.Line(), change.isAdded ? Look::Green : Look::Red);
    }
    return changes.empty() ? Same : Different;
}

int Convert(Arguments const& arguments) {
    Host::RefuseToReplace(arguments.file, arguments.second);
    std::wstring const& to = arguments.format;
    Conversion const done = to == L"meta"       ? ConvertLayout(arguments, LayoutFormat::Meta)
                            : to == L"template" ? ConvertLayout(arguments, LayoutFormat::Template)
                            : to == L"machine"  ? ConvertParameters(arguments, ParameterFormat::Machine)
                                                : ConvertParameters(arguments, ParameterFormat::Generic);
    if (!done.losses.empty()) {
        std::vector<std::wstring> lines;
        for (Change const& change : done.losses) {
            lines.push_back(change.Line());
        }
        Note(arguments.second + L" can't carry all of " + arguments.file + L". Read back, it differs by:",
             lines);
    }
    return done.isReadWhole && done.losses.empty() ? Same : Different;
}

} // namespace Paramtool
