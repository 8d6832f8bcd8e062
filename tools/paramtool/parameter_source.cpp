// SPDX-License-Identifier: Apache-2.0
//
// A parameter file of either format as a database.
//
// To look at: ReadFile and WriteFile beside those of KlvrProperties, which write everything only when told
// so; Place::Find, which finds a place by its path.

#include "parameter_source.h"

#include "common/host.h"
#include "difference_lines.h"
#include "nearest.h"

namespace Paramtool {

namespace {

using namespace Zantrel;
using namespace Zantrel::Editing;

/// An index of leaves can't be made while a choice that the driver supplies has no value. In a file an empty
/// one is the same as none.
void CompleteChoices(ParameterDatabase& database) {
    for (Walk walk(database.GetProfileEditor()); walk.Next();) {
        ParameterNode leaf = walk.Node();
        if (leaf.IsValid() && walk.IsLeaf() && walk.Layout().m_type == StandardOptions &&
            leaf.FindValue<std::wstring>() == nullptr) {
            leaf.SetValueFromText(L"");
        }
    }
}

std::wstring NearestPath(ParameterDatabase const& database, std::wstring const& path) {
    std::vector<std::wstring> known;
    for (PlaceWalk walk(database); walk.Next();) {
        known.emplace_back(walk.GetPathBelowTop());
    }
    return Suggestion(path, known);
}

/// The words by which the format of machine parameters writes entries, whatever the layout calls them.
wchar_t const* EntryWord(LayoutNode const& node) { return node.m_isProfileList ? L"Profile" : L"Instance"; }

} // namespace

ReadReport Read(ParameterDatabase& database, std::wstring const& path, std::wstring const& name,
                ParameterFormat format) {
    ReadReport report;
    if (!(format == ParameterFormat::Machine ? KlvrProperties::ReadFile(database, path, &report)
                                             : ReadFile(database, path, &report))) {
        Host::FailToRead(name, report);
    }
    return report;
}

std::wstring StrangeRoot(LayoutSource const& layout, InputFile const& file, FileSort const& sort) {
    if (sort.kind == FileKind::MachineParameters) {
        return L"";
    }
    if (sort.kind != FileKind::Parameters) {
        return file.Name() + L" is " + WordsOf(sort.kind) + L", no parameter file";
    }
    std::wstring const& wanted = layout.m_layout->m_name;
    // The library reads a file with any root, and would take nothing of most. A template doesn't tell the
    // root of parameter files, and so can't be held against one.
    if (sort.root != wanted && !layout.m_isOfTemplate) {
        return L"no parameter file of this layout: its root is called \"" + sort.root +
               L"\", the layout's \"" + wanted + L"\"; --layout names another layout";
    }
    return L"";
}

ParameterFormat FormatOf(LayoutSource const& layout, InputFile const& file) {
    FileSort const sort = SortOf(file.Path());
    std::wstring const strange = StrangeRoot(layout, file, sort);
    if (!strange.empty()) {
        Host::Fail(strange);
    }
    return sort.kind == FileKind::MachineParameters ? ParameterFormat::Machine : ParameterFormat::Generic;
}

ParameterFile::ParameterFile(Output& output, LayoutSource const& layout, std::wstring const& path)
    : m_input(path), m_format(FormatOf(layout, m_input)), m_database(layout.m_layout.get()) {
    m_passedOver =
        TellPassedOver(output, m_input.Name(), Read(m_database, m_input.Path(), m_input.Name(), m_format));
    CompleteChoices(m_database);
}

void ParameterFile::ReadAgain() {
    Empty();
    Read(m_database, m_input.Path(), m_input.Name(), m_format);
    CompleteChoices(m_database);
}

Place ParameterFile::Find(std::wstring const& path) {
    // An empty path is the editor's, which no command means.
    std::optional<Place> place;
    if (!path.empty()) {
        place = Place::Find(m_database, path);
    }
    if (!place) {
        std::wstring const nearest = NearestPath(m_database, path);
        Host::Fail(m_input.Name() + L" has no parameter " + (path.empty() ? L"without a name" : path) +
                   (nearest.empty() ? L"; paramtool query lists all" : nearest));
    }
    return *place;
}

Place ParameterFile::FindLeaf(std::wstring const& path) {
    Place const place = Find(path);
    if (!place.IsLeaf()) {
        Host::Fail(path + L" holds no value: it is what parameters stand in; paramtool query --contains " +
                   path + L" lists them");
    }
    return place;
}

Place ParameterFile::FindContainer(std::wstring const& path, PlaceKind kind) {
    Place const place = Find(path);
    if (place.GetKind() != kind) {
        Host::Fail(path + (kind == PlaceKind::List ? L" is no list" : L" is no list of profiles"));
    }
    return place;
}

std::vector<std::wstring> Write(ParameterDatabase const& database, std::wstring const& path,
                                ParameterFormat format, bool mayWriteInPlace) {
    WriteReport report;
    report.m_mayWriteInPlace = mayWriteInPlace;
    // By its default the format has profile lists only.
    KlvrProperties::WriteOptions everything;
    everything.m_profileListsOnly = false;
    if (!(format == ParameterFormat::Machine ? KlvrProperties::WriteFile(database, path, everything, &report)
                                             : WriteFile(database, path, L"", &report))) {
        Host::Fail(path + L": " + report.Format());
    }
    return report.m_notes;
}

std::vector<Difference> LossesOf(ParameterDatabase const& database, ParameterDatabase& readBack,
                                 ParameterFormat format) {
    ScratchFile const scratch;
    Write(database, scratch.Path(), format);
    Read(readBack, scratch.Path(), scratch.Path(), format);
    return Differences(database, readBack);
}

std::vector<std::wstring> CausesOfLosses(ParameterDatabase const& database, ParameterFormat format) {
    // Explains what LossesOf has found, and never decides: a cause that is missing here leaves a loss
    // unexplained, but told.
    std::vector<std::wstring> causes;
    if (format == ParameterFormat::Generic) {
        auto const general = PlaceView::Find(database, L"GenericParameters");
        if (general && general->GetCursor().GetHidden()) {
            causes.emplace_back(L"\"GenericParameters\" is hidden, as it is wherever a file lacks it, and "
                                L"what is hidden there isn't written");
        }
        return causes;
    }
    causes.emplace_back(L"machine parameters carry no flags");
    std::wstring lists;
    for (PlaceWalk walk(database); walk.Next();) {
        PlaceView const& place = walk.GetPlace();
        bool const isContainer =
            place.GetKind() == PlaceKind::List || place.GetKind() == PlaceKind::ProfileList;
        if (isContainer && place.GetLayoutNode()->m_nodeName != EntryWord(*place.GetLayoutNode())) {
            lists += (lists.empty() ? L"" : L", ") + place.GetPath() + L" (\"" +
                     place.GetLayoutNode()->m_nodeName + L"\")";
            walk.SkipContent();
        }
    }
    if (!lists.empty()) {
        causes.push_back(L"machine parameters keep entries only where the layout calls them \"Profile\" or "
                         L"\"Instance\", and so none of " +
                         lists);
    }
    return causes;
}

void TellLosses(Output& output, std::vector<Difference> const& losses) {
    for (Difference const& loss : losses) {
        for (DifferenceLine const& line : LinesOf(loss)) {
            output.TellLoss(line.text, JsonOf(loss));
        }
    }
}

} // namespace Paramtool
