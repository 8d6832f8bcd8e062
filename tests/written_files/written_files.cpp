// SPDX-License-Identifier: Apache-2.0
// Writes files of every format into the current folder, or compares those that stand there, from another run
// or another platform, with what it writes itself: written_files write | compare
#include "tests/support/characters.h"
#include "tests/support/generated_database.h"
#include "tests/support/generated_layout.h"
#include "tests/support/generated_ticket.h"
#include "tests/support/sax_test_support.h"

#include "io/output_file.h"

#include <zantrel/zantrel.h>

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

class Written {
public:
    explicit Written(fs::path folder) : m_folder(std::move(folder)) {}

    /// Writes files of all formats. Whether all could be written.
    bool All() {
        for (unsigned seed = 1; seed <= 20; ++seed) {
            m_seed = std::to_wstring(seed);
            Generator generator(seed);
            std::unique_ptr<ParameterLayout> const layout = generator.MakeLayout();
            ParameterDatabase database(layout.get());
            generator.FillContent(database.GetProfileEditor());
            Parameters(database);
            Layouts(*GeneratedLayout(seed, 60));
            BuildTicket ticket(nullptr);
            FillTicket(ticket, seed, 5, 30);
            Tickets(ticket);
        }
        m_seed = L"order";
        Ordered();
        return m_areWritten;
    }

private:
    template <class Write> void Take(std::wstring const& kind, Write const& write) {
        fs::path const path = m_folder / (kind + L'_' + m_seed + L".xml");
        bool const isWritten = write(path.wstring());
        m_areWritten = m_areWritten && isWritten;
        if (!isWritten) {
            std::cout << path.filename().string() << " can't be written\n";
        }
    }

    void Parameters(ParameterDatabase const& database) {
        Take(L"parameters", [&](std::wstring const& path) { return WriteFile(database, path, L""); });
        for (bool const profileListsOnly : {false, true}) {
            KlvrProperties::WriteOptions options;
            options.m_profileListsOnly = profileListsOnly;
            Take(profileListsOnly ? L"profiles" : L"machine_parameters", [&](std::wstring const& path) {
                return KlvrProperties::WriteFile(database, path, options);
            });
        }
    }

    void Layouts(ParameterLayout const& layout) {
        Take(L"meta_file", [&](std::wstring const& path) { return WriteFile(layout, path); });
        KlvrPropertyTemplate::WriteOptions options;
        options.m_profileListsOnly = false;
        Take(L"template", [&](std::wstring const& path) {
            return KlvrPropertyTemplate::WriteFile(layout, path, options);
        });
    }

    void Tickets(BuildTicket const& ticket) {
        for (std::int32_t const version : {1, 2}) {
            BuildTicketWriteOptions options;
            options.m_version = version;
            Take(L"ticket_" + std::to_wstring(version),
                 [&](std::wstring const& path) { return SaveBuildTicket(path, ticket, options); });
        }
    }

    void Ordered() {
        ParameterLayout layout;
        layout.m_profileEditor->AddNode(L"P")->SetProfile(true, L"Profile")->AddNode(L"I", Int, 1);
        ParameterDatabase database(&layout);
        BuildTicket ticket(nullptr);
        for (std::wstring const& name : Names) {
            database.GetProfileEditor().Get(L"P").AddProfile(name.c_str(), true);
            *ticket.GetDefaults().GetValuePointer<std::wstring>(name, true) = name;
        }
        Parameters(database);
        Tickets(ticket);

        ContentList list;
        database.GetProfileEditor().CreateContentList(list);
        std::string paths;
        for (ContentList::Node const& node : list.m_nodes) {
            paths += StringConversion::NativeToUtf8(node.m_path) + '\n';
        }
        Take(L"paths", [&](std::wstring const& path) { return Io::WriteWholeFile(path, paths); });
    }

    fs::path m_folder;
    std::wstring m_seed;
    bool m_areWritten = true;
};

int Compare(fs::path const& there) {
    TemporaryFolder const folder;
    bool isSame = Written(folder / "").All();
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
    return Written(folder).All() ? 0 : 1;
}
