// SPDX-License-Identifier: Apache-2.0
//
// A host whose parameters are declared in a file and not in code: it reads a layout with its translations,
// shows it, writes it in both formats, and keeps values on it as on any other layout.
//
// To look at: ParameterLayout::SetResourceDictionary before ReadWholeFile, in RunOn; WriteWholeFile, and
// KlvrPropertyTemplate::WriteFile, whose default options leave out most; VisitValueType, by which ChangeValue
// sets a value of a type that only the layout knows; Walk, which finds what there is to set.

#include "common/host.h"
#include "outline.h"

#include <zantrel/zantrel.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <type_traits>
#include <vector>

namespace {

using namespace Zantrel;
using Host::Fail;
using Host::Wide;
using std::filesystem::path;
using StringConversion::NativeToUtf8;

constexpr char const* Usage =
    "Usage: layout_from_file LAYOUT FOLDER [LANGUAGE]\n"
    "Reads the layout meta file LAYOUT and shows its parameters, in LANGUAGE or in every\n"
    "language that it is translated into. Writes it as a meta file and as property templates\n"
    "to FOLDER, then makes a database on it, changes values, writes them to a parameter file\n"
    "there and proves that this holds them. FOLDER is made where it is missing; layout.xml,\n"
    "profile_lists.xml, template.xml and parameters.xml in it are replaced. A template doesn't\n"
    "hold a layout whole: see docs/property_template.md.\n"
    "Exit status: 0 when all that held, 1 when not, 2 for other arguments.\n";

std::string Text(path const& file) { return NativeToUtf8(Wide(file)); }

std::size_t CountNodes(LayoutNode const& node) {
    std::size_t count = 1;
    for (std::size_t i = 0; i < node.Size(); ++i) {
        count += CountNodes(node.At(i));
    }
    return count;
}

// --- Showing ---

/// The language that was asked for, or all.
std::vector<std::wstring> ChooseLanguages(ResourceDictionary const& dictionary, std::wstring const& wanted) {
    std::vector<std::wstring> languages = LayoutFromFile::LanguagesOf(dictionary);
    if (wanted.empty()) {
        return languages;
    }
    if (std::find(languages.begin(), languages.end(), wanted) == languages.end()) {
        std::wstring known;
        for (std::wstring const& language : languages) {
            known += (known.empty() ? L"" : L", ") + language;
        }
        Fail(L"The layout is not translated into " + wanted + L", only into: " +
             (known.empty() ? L"nothing" : known));
    }
    return {wanted};
}

// --- Writing the layout ---

using Reader = bool (*)(ParameterLayout&, std::wstring const&, ReadReport*);

/// Says how much of the layout comes back from the file that was just written.
void ShowReadBack(path const& file, char const* what, Reader read) {
    ParameterLayout copy;
    ReadReport report;
    if (!read(copy, Wide(file), &report)) {
        Host::FailToRead(Wide(file), report);
    }
    std::cout << "  " << CountNodes(copy) << " nodes from " << Text(file) << ", " << what << '\n';
}

void WriteMetaFile(ParameterLayout const& layout, path const& file) {
    WriteReport report;
    if (!WriteWholeFile(layout, Wide(file), &report)) {
        Fail(report.Format());
    }
    ShowReadBack(file, "the meta file", ReadWholeFile);
}

void WriteTemplate(ParameterLayout const& layout, path const& file, bool profileListsOnly) {
    KlvrPropertyTemplate::WriteOptions options;
    options.m_profileListsOnly = profileListsOnly;
    WriteReport report;
    if (!KlvrPropertyTemplate::WriteFile(layout, Wide(file), options, &report)) {
        Fail(report.Format());
    }
    ShowReadBack(file, profileListsOnly ? "the template of profile lists" : "the template of everything",
                 KlvrPropertyTemplate::ReadWholeFile);
}

// --- Values ---

constexpr wchar_t const* EntryName = L"\u00DCberhang \u7CBE\u5BC6"; // Überhang 精密

struct Filled {
    std::size_t entries = 0;
    std::size_t values = 0;
};

void ChangeValue(ParameterNode leaf) {
    VisitValueType(leaf.m_pNode->m_type, [&](auto tag) {
        using T = typename decltype(tag)::Type;
        if constexpr (std::is_same_v<T, std::int32_t>) {
            leaf.SetValue(std::int32_t(-7));
        } else if constexpr (std::is_same_v<T, double>) {
            leaf.SetValue(1.0 / 3.0);
        } else if constexpr (std::is_same_v<T, bool>) {
            leaf.SetValue(!leaf.GetValue<bool>());
        } else if constexpr (std::is_same_v<T, KelAM::FileContent>) {
            leaf.SetValue(KelAM::FileContent(L"note.bin", {std::byte{0}, std::byte{0xFF}}));
        } else if constexpr (std::is_same_v<T, std::wstring>) {
            leaf.SetValueFromText(EntryName); // which every profile list has; makes a value where none was
        }
    });
}

ParameterNode AddProfile(ParameterNode list) {
    ParameterNode profile = list.AddProfile(EntryName, true);
    profile.SetCanBeDeleted(false); // a file says so of every profile that nobody allowed to delete
    return profile;
}

/// Gives every container below the cursor an entry, and every value a new one. What there is, only the layout
/// can tell: a host that knows its layout says `editor.Get(L"Machine").Get(L"BuildHeight").SetValue(300.0)`.
void Fill(ParameterNode const& top, Filled& filled) {
    for (Walk walk(top); walk.Next();) {
        if (walk.Node().m_isContainer) {
            bool const isProfileList = walk.Kind() == PlaceKind::ProfileList;
            Fill(isProfileList ? AddProfile(walk.Node()) : walk.Node().AddListNode(true), filled);
            ++filled.entries;
            walk.SkipContent(); // the entries that were there stay as they are
        } else if (walk.Layout().m_type != Group) {
            ChangeValue(walk.Node());
            ++filled.values;
        }
    }
}

// A database needs nothing of how its layout came about. Both databases stand on one layout, since IsEqual
// compares layouts by address.
void ProveValues(ParameterLayout const& layout, path const& file) {
    ParameterDatabase database(&layout);
    Filled filled;
    Fill(database.GetProfileEditor(), filled);
    WriteReport report;
    if (!WriteFile(database, Wide(file), L"", &report)) {
        Fail(report.Format());
    }
    std::cout << "\nA database on it got " << filled.entries << " profiles and list items and "
              << filled.values << " new values. Written to\n  " << Text(file) << '\n';

    ParameterDatabase second(&layout);
    ReadReport const passedOver = Host::Read(second, Wide(file));
    if (!passedOver.m_entries.empty()) {
        Fail(L"What was written is not taken whole: " +
             Host::TextOf(Wide(file), passedOver.m_entries.front()));
    }
    if (!second.IsEqual(database)) {
        Fail(L"Other values came back from " + Wide(file));
    }
    std::cout << "and read into a second database, which is equal to the first.\n";
}

// --- The program ---

void RunOn(path const& input, path const& folder, std::wstring const& language) {
    ResourceDictionary translations;
    ParameterLayout layout;
    layout.SetResourceDictionary(&translations); // before the read, which fills it
    ReadReport const report = Host::Read(layout, Wide(input));
    if (layout.m_profileEditor->Size() == 0) {
        Fail(Wide(input) + L" declares no parameters: nothing stands in its ProfileEditor");
    }

    std::vector<std::wstring> const languages = ChooseLanguages(translations, language);
    std::cout << "Read " << Text(input) << ", the layout of " << NativeToUtf8(layout.m_name) << ":\n\n";
    LayoutFromFile::ShowOutline(layout, languages, std::cout);
    std::cout << '\n';
    Host::ShowPassedOver(Wide(input), report, std::cout);

    std::error_code ignored; // where no folder can be made, the first write says why
    std::filesystem::create_directories(folder, ignored);
    path const metaFile = folder / "layout.xml";
    path const profileLists = folder / "profile_lists.xml";
    path const wholeTemplate = folder / "template.xml";
    path const parameters = folder / "parameters.xml";
    for (path const& output : {metaFile, profileLists, wholeTemplate, parameters}) {
        Host::RefuseToReplace(input, output);
    }
    std::cout << "\nThe layout has " << CountNodes(layout)
              << " nodes. Written, and read back into a new one:\n";
    WriteMetaFile(layout, metaFile);
    WriteTemplate(layout, profileLists, true);
    WriteTemplate(layout, wholeTemplate, false);
    ProveValues(layout, parameters);
}

int Run(Host::Arguments const& arguments) {
    if (arguments == Host::Arguments{"--help"}) {
        std::cout << Usage;
        return 0;
    }
    if (arguments.size() != 2 && arguments.size() != 3) {
        std::cerr << Usage;
        return 2;
    }
    RunOn(Host::PathOf(arguments[0]), Host::PathOf(arguments[1]),
          StringConversion::Utf8ToNative(arguments.size() == 3 ? arguments[2] : ""));
    return 0;
}

} // namespace

int main(int argc, char** argv) { return Host::Main("layout_from_file", argc, argv, Run); }
