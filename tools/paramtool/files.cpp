// SPDX-License-Identifier: Apache-2.0
//
// What a file is, what a read of it passed over, and the standard input and output in the place of files.
//
// To look at: ISAXPersistHelper::HandleTag, the least that a reader of one's own needs; ISAXReader::Refuse,
// which ends a read early; the kinds of ReadReport::Entry.

#include "files.h"

#include "common/host.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <string_view>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace Paramtool {

namespace {

using Zantrel::ReadReport;

/// Ends the read at the root's first child, so that a file of any size is told at once. Such a read counts as
/// failed: that it got somewhere shows by the root alone.
class BeginningReader : public ISAXPersistHelper {
public:
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override {
        std::string_view name;
        KelAM::SaxUtilities::XMLNamespaceHandler().ResolveTag(tag, name, nullptr);
        // Every element after the root is its child here, as the first one ends the read. The words of the
        // two formats with a root of their own need no child.
        (m_root.empty() ? m_root : m_child) = StringConversion::Utf8ToNative(name);
        if (!m_child.empty() || m_root == L"KlvrMachineParameters") {
            reader.Refuse(L"Only the beginning is wanted");
        }
        return true;
    }
    std::wstring m_root, m_child;
};

/// What stands first in each kind of document, where that tells.
FileKind KindOf(BeginningReader const& beginning) {
    // A layout's root is called as the layout is, and so are those of its parameter files: only what stands
    // below tells the two apart. What is none of these is taken for a parameter file, and refused by its root
    // where that is none of the layout's.
    static constexpr struct {
        wchar_t const* word;
        FileKind kind;
    } roots[] = {{L"KlvrMachineParameters", FileKind::MachineParameters},
                 {L"KlvrPropertyTemplate", FileKind::Template},
                 {L"KlvrBuildTicket", FileKind::Ticket}};
    for (auto const& row : roots) {
        if (beginning.m_root == row.word) {
            return row.kind;
        }
    }
    for (wchar_t const* child : {L"Version", L"ProfileEditor", L"JobConfigurator", L"PlatformConfigurator"}) {
        if (beginning.m_child == child) {
            return FileKind::Layout;
        }
    }
    return FileKind::Parameters;
}

void SetBinary(std::FILE* file) {
#ifdef _WIN32
    _setmode(_fileno(file), _O_BINARY);
#else
    static_cast<void>(file);
#endif
}

void CopyInput(std::wstring const& path) {
    SetBinary(stdin);
    std::ofstream out(Host::PathOf(Utf8(path)), std::ios::binary);
    // Copying nothing counts as a failure of the stream that is copied to.
    if (std::cin.peek() != std::char_traits<char>::eof()) {
        out << std::cin.rdbuf();
    }
    if (!out.flush()) {
        Host::Fail(L"Can't keep the standard input in " + path);
    }
}

} // namespace

FileSort SortOf(std::wstring const& path) {
    BeginningReader reader;
    ReadReport report;
    KelAM::SaxUtilities::ReadFile(path, reader, &report);
    if (reader.m_root.empty()) {
        Host::FailToRead(path, report);
    }
    return {KindOf(reader), reader.m_root};
}

std::wstring WordsOf(FileKind kind) {
    switch (kind) {
    case FileKind::MachineParameters:
        return L"a machine parameters file";
    case FileKind::Layout:
        return L"a layout";
    case FileKind::Template:
        return L"a property template";
    case FileKind::Ticket:
        return L"a build ticket";
    default:
        return L"a parameter file";
    }
}

std::size_t TellPassedOver(Output& output, std::wstring const& file, ReadReport const& report,
                           void (Output::*tell)(Message const&)) {
    std::size_t told = 0;
    // Entries come in the order of the document, so that the latest untaken element is enough: what it holds
    // follows it at once.
    std::wstring untaken = L"/"; // a path and "/"; no path begins so
    for (ReadReport::Entry const& entry : report.m_entries) {
        if (entry.kind == ReadReport::Kind::DroppedValue &&
            entry.path.compare(0, untaken.size(), untaken) == 0) {
            continue;
        }
        Message message = MessageOf(file, entry);
        if (tell == &Output::Tell) {
            message.severity = Severity::Warning;
        }
        (output.*tell)(message);
        ++told;
        if (entry.kind == ReadReport::Kind::UntakenElement) {
            untaken = entry.path + L'/';
        }
    }
    if (report.m_leftOut != 0) {
        (output.*
         tell)({Severity::Note, file, 0, 0, L"and " + std::to_wstring(report.m_leftOut) + L" more", L""});
    }
    return told;
}

// By its GUID no other run has the name, and two of one run don't share it.
ScratchFile::ScratchFile()
    : m_path(std::filesystem::temp_directory_path() / (L"paramtool_" + KelSDK::CreateUUID_t() + L".xml")) {}

ScratchFile::~ScratchFile() {
    std::error_code ignored; // it may never have been written
    std::filesystem::remove(m_path, ignored);
}

std::wstring ScratchFile::Path() const { return Host::Wide(m_path); }

// The library reads files by their names, some of them twice; the standard input, which can be read once,
// becomes a file for that.
InputFile::InputFile(std::wstring const& name) : m_name(name), m_path(name) {
    if (name == L"-") {
        m_name = L"standard input";
        m_path = m_scratch.emplace().Path();
        CopyInput(m_path);
    }
}

OutputFile::OutputFile(std::wstring const& name, Output const& output) : m_path(name) {
    if (name == L"-") {
        if (output.m_isJson) {
            Host::Fail(L"The standard output has the document of --json to carry");
        }
        m_path = m_scratch.emplace().Path();
    }
}

void OutputFile::Finish() const {
    if (m_scratch) {
        PrintBytes(BytesOf(m_path));
    }
}

std::string BytesOf(std::wstring const& path) {
    std::ifstream in(Host::PathOf(Utf8(path)), std::ios::binary);
    std::string bytes;
    // In pieces, as a pipe has no size to ask for.
    for (char piece[1 << 16]; in.read(piece, sizeof piece) || in.gcount() != 0;) {
        bytes.append(piece, static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad() || !in.eof()) {
        Host::Fail(L"Can't read " + path);
    }
    return bytes;
}

void RefuseToReplace(std::initializer_list<std::wstring> inputs, std::wstring const& output) {
    for (std::wstring const& input : inputs) {
        Host::RefuseToReplace(Host::PathOf(Utf8(input)), Host::PathOf(Utf8(output)));
    }
}

void WriteBytes(OutputFile const& file, std::string const& bytes) {
    std::ofstream out(Host::PathOf(Utf8(file.Path())), std::ios::binary);
    if (!out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush()) {
        Host::Fail(L"Can't write " + file.Path());
    }
    file.Finish();
}

void PrintBytes(std::string_view bytes) {
    // What was printed before goes out first, in the mode that it was printed in.
    std::cout.flush();
    SetBinary(stdout);
    std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace Paramtool
