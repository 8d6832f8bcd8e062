// SPDX-License-Identifier: Apache-2.0
#include <zantrel/zantrel.h>

#include <iostream>
#include <string>
#include <type_traits>

using namespace Zantrel;

int main() {
    ParameterLayout layout;
    layout.SetName(L"Welder");

    LayoutNode* laser = layout.m_profileEditor->AddNode(L"Laser")->SetDisplayName(L"Laser");
    laser->AddNode(L"Power", Double, 200.0)->SetRange(0.0, 500.0)->SetPostfix(L"W");
    laser->AddNode(L"Passes", Int, 2)->SetRange(1, 10);
    laser->AddNode(L"Pulsed", Bool, false)->SetDescription(L"Whether the beam is switched.");
    laser->AddNode(L"Focus", Distance, 0.0)->SetPrecision(6)->SetDefaultValue(0.00005);
    laser->AddNode(L"Mode", Options, L"Spot")->AddOption(L"Spot", L"A spot")->AddOption(L"Line", L"A line");
    layout.AddCategoryNodeIfNeeded();

    ParameterDatabase database(&layout);
    ParameterNode values = database.GetProfileEditor().Get(L"Laser");
    values.Get(L"Power").SetValue(275.5);
    values.Get(L"Pulsed").SetValue(true);

    double const power = values.Get(L"Power").GetValue<double>();
    std::wcout << L"The power is " << power << L" W.\n\n";

    for (Walk walk(database.GetProfileEditor()); walk.Next();) {
        std::wcout << std::wstring(2 * walk.Depth(), L' ') << walk.Name();
        VisitValue(walk.Node(), [&](auto const& value) {
            if constexpr (!std::is_same_v<decltype(value), KelAM::FileContent const&>) {
                std::wstring const& unit = walk.Layout().m_postfix;
                std::wcout << L" = " << std::boolalpha << value << (unit.empty() ? L"" : L" ") << unit;
            }
        });
        std::wcout << L'\n';
    }
}
