// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <fstream>
#include <iostream>
#include <optional>

using namespace Zantrel;
using namespace Zantrel::Editing;

int main() {
    ParameterLayout layout;
    layout.SetName(L"Printer");
    LayoutNode* laser = layout.m_profileEditor->AddNode(L"Laser");
    laser->AddNode(L"Power", Double, 200.0)->SetRange(50.0, 400.0);
    laser->AddNode(L"Passes", Int, 2);
    layout.AddCategoryNodeIfNeeded();

    std::ofstream("printer.xml") << R"xml(<Printer>
  <Laser>
    <Power>450</Power>
    <Passes>many</Passes>
    <Colour>red</Colour>
  </Laser>
</Printer>
)xml";

    ParameterDatabase database(&layout);
    ReadReport report;
    report.m_limits.m_bytes = 64 << 20;
    bool const isRead = ReadFile(database, L"printer.xml", &report);
    for (ReadReport::Entry const& entry : report.m_entries) {
        std::wcout << L"printer.xml:" << ReadReport::Format(entry) << L'\n';
    }
    if (!isRead) {
        return 1; // the last entry says why, and the database holds what had arrived
    }

    for (Finding const& finding : Validate(database)) {
        std::wcout << finding.path << L": " << finding.sentence << L'\n';
    }

    ParameterDatabase const before = database;
    Place const power = Place(database).Get(L"Laser").Get(L"Power");
    if (std::optional<Finding> const refused = SetText(power, L"380 W")) {
        std::wcout << refused->sentence << L'\n';
    }
    SetText(power, L"380");
    for (Difference const& difference : Differences(before, database)) {
        std::wcout << difference.path << L": " << difference.before << L" -> " << difference.after << L'\n';
    }

    WriteReport written;
    if (!WriteFile(database, L"no such folder/printer.xml", L"", &written)) {
        std::wcout << L"Not saved.\n"; // written.Format() has the cause, in the words of the system
    }
    if (WriteFile(database, L"printer.xml", L"", &written)) {
        std::wcout << L"Saved.\n"; // written.m_notes has what is worth knowing all the same
    }

    ParameterDatabase again(&layout);
    ReadReport second;
    if (ReadFile(again, L"printer.xml", &second) && second.m_entries.empty() && again.IsEqual(database)) {
        std::wcout << L"It came back whole.\n";
    }
    std::ofstream("printer.xml", std::ios::app) << "<more/>\n";
    if (!ReadFile(again, L"printer.xml", &second)) {
        std::wcout << L"printer.xml:" << ReadReport::Format(second.m_entries.back()) << L'\n';
    }
}
