// SPDX-License-Identifier: Apache-2.0
#include "trees.h"

#include <zantrel/zantrel.h>

#include <cstddef>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

// The smallest complete host: it reads a parameter file into the sample layout, shows it, changes it through
// cursors, writes it, and proves that nothing was lost on the way. Texts go to the terminal in UTF-8,
// whatever the locale.

namespace {

using namespace Zantrel;
using StringConversion::NativeToUtf8;

constexpr char const* Usage =
    "Usage: round_trip FILE [RESULT]\n"
    "Reads the parameter file FILE, shows it, changes some values, writes all to RESULT and\n"
    "proves that RESULT holds every value. RESULT is round_trip_result.xml in the current\n"
    "folder unless given, and never FILE itself. What the format doesn't carry counts as\n"
    "lost: see docs/generic_parameter_file.md.\n"
    "Exit status: 0 when all values came back, 1 when not, 2 for other arguments.\n";

[[noreturn]] void Fail(std::wstring const& sentence) { throw std::runtime_error(NativeToUtf8(sentence)); }

/// "file:line:column: sentence (path of elements)"; the sentence alone where there is no place to name.
std::wstring TextOf(std::wstring const& path, ReadReport::Entry const& entry) {
    std::wstring const text = ReadReport::Format(entry);
    return entry.line == 0 ? text : path + L':' + text;
}

ReadReport Read(Zantrel::ParameterDatabase& database, std::wstring const& path) {
    ReadReport report;
    if (!ReadFile(database, path, &report)) {
        // The cause ends the read, so it stands last.
        Fail(report.m_entries.empty() ? L"Can't read " + path : TextOf(path, report.m_entries.back()));
    }
    return report;
}

void ShowPassedOver(std::wstring const& path, ReadReport const& report) {
    if (report.m_entries.empty()) {
        std::cout << "Everything in it was taken.\n";
        return;
    }
    std::cout << "Passed over:\n";
    for (ReadReport::Entry const& entry : report.m_entries) {
        std::cout << "  " << NativeToUtf8(TextOf(path, entry)) << '\n';
    }
    if (report.m_leftOut != 0) {
        std::cout << "  and " << report.m_leftOut << " more\n";
    }
}

/// `wish`, or with a number behind it when a profile has that name already: a second one would never be
/// found.
std::wstring FreeProfileName(ParameterNode const& list, std::wstring const& wish) {
    std::wstring name = wish;
    for (int number = 2; list.HasProfile(name.c_str()); ++number) {
        name = wish + L' ' + std::to_wstring(number);
    }
    return name;
}

void AddFineProfile(ParameterNode const& category, Sample::ParameterLayout const& layout) {
    ParameterNode slicing = category.Get(layout.m_slicing);
    std::wstring const name = FreeProfileName(slicing, L"\u00DCberhang \u7CBE\u5BC6"); // Überhang 精密
    ParameterNode fine = slicing.AddProfile(name.c_str(), true);
    fine.SetNameReadOnly(true);
    fine.Get(layout.m_sliceThickness).SetValue(0.02);
    fine.Get(layout.m_sliceType).SetValueFromText(Sample::_SliceTypeSymmetric);
    fine.Get(layout.m_gapFillEnabled).SetValue(false); // several levels down, through groups only
    category.Get(layout.m_profileSlicing).SetValue(name);
}

void AddRange(ParameterNode const& category, Sample::ParameterLayout const& layout) {
    ParameterNode const ranges = category.Get(layout.m_export).GetDefault().Get(L"Ranges");
    ParameterNode const range = ranges.AddListNode(true);
    range.Get(L"Begin").SetValue(12.5);
    range.Get(L"End").SetValue(1.0 / 3.0);
}

void ChangeGeneralParameters(ParameterNode const& general) {
    if (general.GetHidden()) {
        return; // not written, so a change would be lost
    }
    ParameterNode const group = general.Get(L"TestGroup");
    group.Get(L"SomeInteger250").SetValue(251);
    group.Get(L"SomePath").SetReadOnly(true);
    group.Get(L"SomeComplexGroup").Get(L"ListOfDoubles").AddListNode(false).SetValue(-0.1);
    group.Get(L"SomeAttachment").SetValue(KelAM::FileContent(L"note.bin", {std::byte{0}, std::byte{0xFF}}));
}

void Change(Zantrel::ParameterDatabase& database, Sample::ParameterLayout const& layout) {
    ParameterNode const editor = database.GetProfileEditor();
    ParameterNode const category = editor.Get(layout.m_categories).GetDefault();
    AddFineProfile(category, layout);
    AddRange(category, layout);
    ChangeGeneralParameters(editor.Get(layout.m_genericParameters));
}

void Write(Zantrel::ParameterDatabase const& database, std::wstring const& path) {
    WriteReport report;
    if (!WriteFile(database, path, L"", &report)) {
        Fail(report.Format());
    }
}

/// The document that WriteFile writes, made by the handler and the driver that it uses.
std::string WriteToMemory(Zantrel::ParameterDatabase const& database) {
    KelAM::SaxUtilities::WriteOptions options;
    options.m_rootTag = NativeToUtf8(database.GetLayout()->m_name);
    std::unique_ptr<ISAXPersist> const handler(_CreateSaxHandlerForWriting(database, std::wstring()));
    std::ostringstream document;
    WriteReport report;
    if (!KelAM::SaxUtilities::WriteStream(document, *handler, options, &report)) {
        Fail(report.Format());
    }
    return document.str();
}

bool FileHolds(std::wstring const& path, std::string const& document) {
    KelAM::FileContent file;
    return file.LoadFile(path) &&
           document ==
               std::string_view(reinterpret_cast<char const*>(file.m_data.data()), file.m_data.size());
}

/// Reads the result into a new database and compares everything.
void Prove(Zantrel::ParameterDatabase& database, std::wstring const& path) {
    Zantrel::ParameterDatabase second(database.GetLayout());
    ReadReport const report = Read(second, path);
    if (!report.m_entries.empty()) {
        Fail(L"What was written is not taken whole: " + TextOf(path, report.m_entries.front()));
    }
    RoundTrip::Equalities const equal =
        RoundTrip::Compare(database.GetProfileEditor(), second.GetProfileEditor());
    if (!FileHolds(path, WriteToMemory(second))) {
        Fail(L"Writing what was read back gives another document than " + path);
    }
    std::cout << "Equal after reading back: " << equal.values << " values, " << equal.flags << " flags, "
              << equal.entries << " profiles and list entries; a second write gives the same bytes.\n";
}

void RunRoundTrip(std::wstring const& input, std::wstring const& output) {
    Sample::ParameterLayout layout(2);
    layout.AddCategoryNodeIfNeeded(); // the layout is finished, and from here on only read
    Sample::ParameterDatabase database(&layout);

    ReadReport const report = Read(database, input);
    std::cout << "Read " << NativeToUtf8(input) << ":\n\n";
    RoundTrip::Show(database.GetProfileEditor(), std::cout);
    std::cout << '\n';
    ShowPassedOver(input, report);

    Change(database, layout);
    Write(database, output);
    std::cout << "Added a profile and list entries, changed values, and wrote " << NativeToUtf8(output)
              << ".\n";
    Prove(database, output);
}

/// An argument as the wide path that the library takes.
std::wstring WidePath(std::filesystem::path const& path) {
    return StringConversion::Utf8ToNative(path.u8string());
}

int Run(int argc, char const* const* argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--help") {
        std::cout << Usage;
        return 0;
    }
    if (argc != 2 && argc != 3) {
        std::cerr << Usage;
        return 2;
    }
    std::filesystem::path const input(argv[1]);
    std::filesystem::path const output(argc == 3 ? argv[2] : "round_trip_result.xml");
    std::error_code ignored; // where nothing can be found out, the two are not one file
    if (std::filesystem::equivalent(input, output, ignored)) {
        Fail(L"The result would replace the file that is read: " + WidePath(output));
    }
    RunRoundTrip(WidePath(input), WidePath(output));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        int const status = Run(argc, argv);
        if (!std::cout.flush()) {
            throw std::runtime_error("Can't write to the standard output");
        }
        return status;
    } catch (std::exception const& error) {
        std::cout.flush();
        std::cerr << "round_trip: " << error.what() << '\n';
        return 1;
    }
}
