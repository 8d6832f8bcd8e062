// SPDX-License-Identifier: Apache-2.0
#include <zantrel/zantrel.h>

#include <iostream>
#include <string>
#include <vector>

using namespace Zantrel;

int main() {
    ParameterLayout layout;
    layout.SetName(L"Printer");
    LayoutNode* materials = layout.m_profileEditor->AddNode(L"Materials")->SetProfile(true, L"Material");
    materials->AddNode(L"Power", Double, 200.0)->SetPostfix(L"W");
    LayoutNode* passes = materials->AddNode(L"Passes")->SetList(true, L"Pass", L"Pass");
    passes->SetMultiplicity(1)->AddNode(L"Speed", Double, 800.0)->SetPostfix(L"mm/s");

    LayoutNode* machine = layout.m_profileEditor->AddNode(L"Machine");
    machine->AddNode(L"Loaded", String, L"")
        ->SetTypeFromProfiles(materials)
        ->SetProfileName(materials->m_name);
    layout.AddCategoryNodeIfNeeded();

    ParameterDatabase database(&layout);
    ParameterNode editor = database.GetProfileEditor();
    ParameterNode list = editor.Get(L"Materials");
    list.GetDefault().Get(L"Power").SetValue(250.0);

    ParameterNode steel = list.AddProfile(L"Steel", true);    // as the default profile is now: 250 W
    ParameterNode copper = list.AddProfile(L"Copper", false); // as the layout has it: 200 W
    copper.Get(L"Power").SetValue(copper.Get(L"Power").GetValue<double>() + 120.0);
    editor.Get(L"Machine").Get(L"Loaded").SetValue(L"Steel");

    ParameterNode steelPasses = steel.Get(L"Passes");
    steelPasses.AddListNode(true).Get(L"Speed").SetValue(1200.0);
    for (unsigned long long i = 0; i < steelPasses.GetSize(); ++i) {
        std::wcout << L"Pass " << i << L": " << steelPasses.GetListNode(i).Get(L"Speed").GetValue<double>()
                   << L" mm/s\n";
    }

    std::vector<std::wstring> names;
    list.GetProfiles(names);
    for (std::wstring const& name : names) {
        std::wcout << name << L": " << list.GetProfile(name.c_str()).Get(L"Power").GetValue<double>()
                   << L" W\n";
    }

    if (!list.HasProfile(L"Brass")) {
        std::wcout << L"No brass, and " << (list.GetProfile(L"Brass").IsValid() ? L"a" : L"no")
                   << L" cursor on it.\n";
    }
    double const speed = editor.Query(L"Materials_Material[Steel]_Passes_Pass[1]_Speed").GetValue<double>();
    std::wcout << L"By its path: " << speed << L" mm/s\n";
}
