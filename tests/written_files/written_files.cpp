// SPDX-License-Identifier: Apache-2.0
// Writes files of every format into the current folder, or compares those that stand there, from another run
// or another platform, with what it writes itself: written_files write | compare
#include "tests/formats/formats.h"
#include "tests/support/characters.h"

#include "io/output_file.h"

#include <filesystem>
#include <iostream>
#include <string_view>

using namespace TestSupport;
namespace fs = std::filesystem;

namespace {

/// Names whose order by code point is not the one by code unit.
std::wstring const Names[] = {
    Character(0x10FFFF), L"\xFF41", Character(0x10000), L"\xD7FF", Character(0x1F600) + L"b",
    L"\xE000",           L"z",      Character(0x1F600), L"\xFFFD", Pair(0x1F601)};

/// Whether it was written, which is said where it wasn't.
bool Take(fs::path const& path, bool isWritten) {
    if (!isWritten) {
        std::cout << path.filename().string() << " can't be written\n";
    }
    return isWritten;
}

bool WriteOrdered(fs::path const& folder) {
    ParameterLayout layout;
    layout.m_profileEditor->AddNode(L"P")->SetProfile(true, L"Profile")->AddNode(L"I", Int, 1);
    ParameterDatabase database(&layout);
    BuildTicket ticket(nullptr);
    for (std::wstring const& name : Names) {
        database.GetProfileEditor().Get(L"P").AddProfile(name.c_str(), true);
        *ticket.GetDefaults().GetValuePointer<std::wstring>(name, true) = name;
    }
    ContentList list;
    database.GetProfileEditor().CreateContentList(list);
    std::string paths;
    for (ContentList::Node const& node : list.m_nodes) {
        paths += StringConversion::NativeToUtf8(node.m_path) + '\n';
    }
    bool areWritten = Io::WriteWholeFile((folder / "paths_order.xml").wstring(), paths);
    auto const write = [&](auto const& io, auto const& object, char const* name) {
        fs::path const path = folder / name;
        areWritten &= Take(path, io.writeFile(object, path.wstring(), nullptr));
    };
    write(GenericParameters, database, "parameters_order.xml");
    write(MachineParameterFile<false>, database, "machine_parameters_order.xml");
    write(MachineParameterFile<true>, database, "profiles_order.xml");
    write(TicketFile<1>, ticket, "ticket_1_order.xml");
    write(TicketFile<2>, ticket, "ticket_2_order.xml");
    return areWritten;
}

/// Writes files of all forms. Whether all could be written.
bool WriteAll(fs::path const& folder) {
    bool areWritten = WriteOrdered(folder);
    for (WrittenForm const& form : WrittenForms) {
        for (unsigned seed = 1; seed <= 20; ++seed) {
            fs::path const path = folder / (std::wstring(form.name) + L'_' + std::to_wstring(seed) + L".xml");
            areWritten &= Take(path, form.make()->Generated(seed)->WriteFile(path.wstring()));
        }
    }
    return areWritten;
}

int Compare(fs::path const& there) {
    TemporaryFolder const folder;
    bool isSame = WriteAll(folder / "");
    int compared = 0;
    for (fs::directory_entry const& entry : fs::directory_iterator(folder / "")) {
        std::string const name = entry.path().filename().string();
        if (ContentOf(entry.path()) != ContentOf(there / name)) {
            isSame = false;
            std::cout << name << " differs\n";
        }
        ++compared;
    }
    auto const others = std::distance(fs::directory_iterator(there), fs::directory_iterator());
    std::cout << compared << " files compared with " << others << '\n';
    return isSame && compared == others ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    fs::path const folder = fs::current_path();
    std::string_view const command = count == 2 ? arguments[1] : "";
    if (command == "compare") {
        return Compare(folder);
    }
    if (command != "write") {
        return 2;
    }
    for (fs::directory_entry const& entry : fs::directory_iterator(folder)) {
        fs::remove(entry); // from an earlier run, which may have written others
    }
    return WriteAll(folder) ? 0 : 1;
}
