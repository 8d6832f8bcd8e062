// SPDX-License-Identifier: Apache-2.0
#include <zantrel/zantrel.h>

#include <iostream>

int main() {
    // The schema: what parameters there are, with defaults, limits and units.
    Zantrel::ParameterLayout layout;
    layout.SetName(L"LaserParameters");
    Zantrel::LayoutNode* laser = layout.m_profileEditor->AddNode(L"Laser");
    laser->AddNode(L"Power", Zantrel::eTypeLayoutNode::Double, 200.0)->SetRange(0.0, 500.0)->SetPostfix(L"W");
    laser->AddNode(L"Pulsed", Zantrel::eTypeLayoutNode::Bool, false);
    layout.AddCategoryNodeIfNeeded();

    // The values: complete from the start, then changed and written.
    Zantrel::ParameterDatabase database(&layout);
    database.GetProfileEditor().Get(L"Laser").Get(L"Power").SetValue(275.5);
    if (!Zantrel::WriteFile(database, L"laser.xml", L"")) {
        return 1;
    }

    // Another database on the same layout takes what the file holds.
    Zantrel::ParameterDatabase copy(&layout);
    if (!Zantrel::ReadFile(copy, L"laser.xml")) {
        return 1;
    }
    std::cout << copy.GetProfileEditor().Get(L"Laser").Get(L"Power").GetValue<double>() << " W\n";
}
