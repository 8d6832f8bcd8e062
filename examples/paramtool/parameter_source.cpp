// SPDX-License-Identifier: Apache-2.0
//
// A parameter file of either format as a database.
//
// To look at: ReadFile and WriteFile beside those of KlvrProperties, which write everything only when told
// so; ParameterNode::Query, which finds a leaf by its path.

#include "parameter_source.h"

#include "common/host.h"
#include "files.h"

namespace Paramtool {

namespace {

using namespace Zantrel;

/// Gives what was passed over.
std::vector<std::wstring> Read(ParameterDatabase& database, std::wstring const& path,
                               ParameterFormat format) {
    ReadReport report;
    if (!(format == ParameterFormat::Machine ? KlvrProperties::ReadFile(database, path, &report)
                                             : ReadFile(database, path, &report))) {
        Host::FailToRead(path, report);
    }
    return LinesOf(path, report);
}

bool WriteAs(ParameterFormat format, ParameterDatabase const& database, std::wstring const& path,
             WriteReport* report) {
    if (format == ParameterFormat::Generic) {
        return WriteFile(database, path, L"", report);
    }
    KlvrProperties::WriteOptions everything;
    everything.m_profileListsOnly = false;
    return KlvrProperties::WriteFile(database, path, everything, report);
}

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

} // namespace

ParameterFormat FormatOf(std::wstring const& path) {
    return RootOf(path) == L"KlvrMachineParameters" ? ParameterFormat::Machine : ParameterFormat::Generic;
}

ParameterFile::ParameterFile(ParameterLayout const& layout, std::wstring const& path)
    : m_path(path), m_format(FormatOf(path)), m_database(&layout),
      m_passedOver(Read(m_database, path, m_format)) {
    CompleteChoices(m_database);
}

ParameterNode ParameterFile::Find(std::wstring const& path) {
    ParameterNode const leaf = m_database.GetProfileEditor().Query(path.c_str());
    if (!leaf.IsValid()) {
        Host::Fail(m_path + L" has no parameter " + path + L"; paramtool query " + m_path + L" lists all");
    }
    return leaf;
}

std::vector<Change> ParameterFile::Write(std::wstring const& path, ParameterFormat format) {
    WriteReport report;
    if (!WriteAs(format, m_database, path, &report)) {
        Host::Fail(m_path + L": " + report.Format());
    }
    // What can't be read back is told, not what the format is known to lack: a loss that nobody has thought
    // of shows as well.
    ParameterDatabase copy(m_database.GetLayout());
    Read(copy, path, format);
    return Differences(FactsOf(m_database), FactsOf(copy));
}

} // namespace Paramtool
