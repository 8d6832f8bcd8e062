// SPDX-License-Identifier: Apache-2.0
//
// The smallest complete host: it reads a parameter file into the sample layout, shows it, changes it through
// cursors, writes it, and proves that nothing was lost on the way. The place to begin.
//
// To look at: ParameterLayout and ParameterDatabase, made in RunRoundTrip; ReadFile and WriteFile with a
// report; ParameterNode::Get by handle and by name, SetValue, AddProfile, AddListNode, in the functions that
// change.

#include "common/host.h"
#include "trees.h"

#include <zantrel/zantrel.h>

#include <cstddef>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

namespace {

using namespace Zantrel;
using Host::Fail;
using Host::TextOf;
using Host::Wide;
using StringConversion::NativeToUtf8;

constexpr char const* Usage =
    "Usage: round_trip FILE [RESULT]\n"
    "Reads the parameter file FILE, shows it, changes some values, writes all to RESULT and\n"
    "proves that RESULT holds every value. RESULT is round_trip_result.xml in the current\n"
    "folder unless given, and never FILE itself. What the format doesn't carry counts as\n"
    "lost: see docs/generic_parameter_file.md.\n"
    "Exit status: 0 when all values came back, 1 when not, 2 for other arguments.\n";

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
    ReadReport const report = Host::Read(second, path);
    if (!report.m_entries.empty()) {
        Fail(L"What was written is not taken whole: " + TextOf(path, report.m_entries.front()));
    }
    RoundTrip::Equalities const equal = RoundTrip::Compare(database, second);
    if (!FileHolds(path, WriteToMemory(second))) {
        Fail(L"Writing what was read back gives another document than " + path);
    }
    std::cout << "Equal after reading back: " << equal.values << " values and " << equal.entries
              << " profiles and list entries, with all flags; a second write gives the same bytes.\n";
}

void RunRoundTrip(std::wstring const& input, std::wstring const& output) {
    Sample::ParameterLayout layout(2);
    layout.AddCategoryNodeIfNeeded(); // the layout is finished, and from here on only read
    Sample::ParameterDatabase database(&layout);

    ReadReport const report = Host::Read(database, input);
    std::cout << "Read " << NativeToUtf8(input) << ":\n\n";
    RoundTrip::Show(database.GetProfileEditor(), std::cout);
    std::cout << '\n';
    Host::ShowPassedOver(input, report, std::cout);

    Change(database, layout);
    Write(database, output);
    std::cout << "Added a profile and list entries, changed values, and wrote " << NativeToUtf8(output)
              << ".\n";
    Prove(database, output);
}

int Run(Host::Arguments const& arguments) {
    if (arguments == Host::Arguments{"--help"}) {
        std::cout << Usage;
        return 0;
    }
    if (arguments.size() != 1 && arguments.size() != 2) {
        std::cerr << Usage;
        return 2;
    }
    std::filesystem::path const input = Host::PathOf(arguments[0]);
    std::filesystem::path const output =
        Host::PathOf(arguments.size() == 2 ? arguments[1] : "round_trip_result.xml");
    Host::RefuseToReplace(input, output);
    RunRoundTrip(Wide(input), Wide(output));
    return 0;
}

} // namespace

int main(int argc, char** argv) { return Host::Main("round_trip", argc, argv, Run); }
