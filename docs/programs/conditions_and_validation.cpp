// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/editing.h>
#include <zantrel/zantrel.h>

#include <iostream>

using namespace Zantrel;
using namespace Zantrel::Editing;

int main() {
    ParameterLayout layout;
    layout.SetName(L"Printer");
    LayoutNode* heater = layout.m_profileEditor->AddNode(L"Heater");
    LayoutNode* heated = heater->AddNode(L"Heated", Bool, false)->SetDisplayName(L"Heat the plate");
    heater->AddNode(L"Temperature", Double, 80.0)
        ->SetDisplayName(L"Temperature")
        ->SetRange(40.0, 200.0)
        ->AddVisibilitySource(heated, true);
    LayoutNode* gas = heater->AddNode(L"Gas", Options, L"N2");
    gas->AddOption(L"N2", L"Nitrogen")->AddOption(L"Ar", L"Argon");
    layout.AddCategoryNodeIfNeeded();

    for (LintFinding const& finding : Lint(layout)) {
        std::wcout << finding.path << L": " << finding.sentence << L'\n'; // nothing, as it should be
    }

    ParameterDatabase database(&layout);
    Place const top(database);
    Place const temperature = top.Get(L"Heater").Get(L"Temperature");
    for (LookReason const& reason : LookOf(temperature).reasons) {
        std::wcout << SentenceOf(reason, temperature) << L'\n';
    }
    SetText(top.Get(L"Heater").Get(L"Heated"), L"true");
    std::wcout << (LookOf(temperature).isVisible ? L"Now it is shown.\n" : L"Still hidden.\n");

    for (Choice const& choice : ChoicesOf(top.Get(L"Heater").Get(L"Gas"))) {
        std::wcout << choice.value << L": " << choice.displayName << L'\n';
    }
    for (wchar_t const* text : {L"hot", L"500", L"120"}) {
        for (Finding const& finding : Objections(temperature, text)) {
            std::wcout << finding.sentence << L'\n';
        }
    }

    database.GetProfileEditor().Get(L"Heater").Get(L"Temperature").SetValue(500.0); // asks nobody
    for (Finding const& finding : Validate(database)) {
        std::wcout << finding.path << L": " << finding.sentence << L'\n';
    }
}
