// SPDX-License-Identifier: Apache-2.0
//
// Which format a file has, and what a read passed over.
//
// To look at: ISAXPersistHelper::HandleTag, the least that a reader of one's own needs; ISAXReader::Refuse,
// which ends a read early; the kinds of ReadReport::Entry.

#include "files.h"

#include "common/host.h"
#include "terminal.h"

#include <string_view>
#include <system_error>

namespace Paramtool {

namespace {

using Zantrel::ReadReport;

/// Ends the read at the root's start tag, so that a file of any size is told at once. Such a read counts as
/// failed: that it got somewhere shows by the root alone.
class RootReader : public ISAXPersistHelper {
public:
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override {
        std::string_view name;
        KelAM::SaxUtilities::XMLNamespaceHandler().ResolveTag(tag, name, nullptr);
        m_root = StringConversion::Utf8ToNative(name);
        reader.Refuse(L"Only the root is wanted");
        return true;
    }
    std::wstring m_root;
};

} // namespace

std::wstring RootOf(std::wstring const& path) {
    RootReader reader;
    ReadReport report;
    KelAM::SaxUtilities::ReadFile(path, reader, &report);
    if (reader.m_root.empty()) {
        Host::FailToRead(path, report);
    }
    return reader.m_root;
}

std::vector<std::wstring> LinesOf(std::wstring const& path, ReadReport const& report) {
    std::vector<std::wstring> lines;
    std::wstring untaken = L"/"; // a path and "/"; no path begins so
    for (ReadReport::Entry const& entry : report.m_entries) {
        if (entry.kind == ReadReport::Kind::DroppedValue &&
            entry.path.compare(0, untaken.size(), untaken) == 0) {
            continue;
        }
        lines.push_back(Host::TextOf(path, entry));
        if (entry.kind == ReadReport::Kind::UntakenElement) {
            untaken = entry.path + L'/';
        }
    }
    if (report.m_leftOut != 0) {
        lines.push_back(L"and " + std::to_wstring(report.m_leftOut) + L" more");
    }
    return lines;
}

bool NotePassedOver(std::vector<std::wstring> const& lines) {
    if (!lines.empty()) {
        Note(L"Passed over:", lines);
    }
    return lines.empty();
}

ScratchFile::ScratchFile()
    : m_path(std::filesystem::temp_directory_path() / (L"paramtool_" + KelSDK::CreateUUID_t() + L".xml")) {}

ScratchFile::~ScratchFile() {
    std::error_code ignored; // it may never have been written
    std::filesystem::remove(m_path, ignored);
}

std::wstring ScratchFile::Path() const { return Host::Wide(m_path); }

} // namespace Paramtool
