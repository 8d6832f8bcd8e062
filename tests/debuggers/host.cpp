// SPDX-License-Identifier: Apache-2.0
// What a debugger is to show: it stops in Look, and its variables are those of main.
#include <zantrel/zantrel.h>

#include <string>

using namespace Zantrel;

namespace {

int volatile looks = 0;
void Look() { looks = looks + 1; }

struct Layout : ParameterLayout {
    Layout() {
        SetName(L"Printer");
        LayoutNode* laser = m_profileEditor->AddNode(L"Laser");
        laser->AddNode(L"Power", Double, 200.0)->SetRange(50.0, 400.0)->SetPostfix(L"W");
        laser->AddNode(L"Name", String, L"A \"B\"");
        laser->AddNode(L"Pulsed", Bool, true);
        m_profileEditor->AddNode(L"Passes")->SetList(true, L"Pass", L"Pass")->AddNode(L"Speed", Int, 800);
    }
};

} // namespace

int main() {
    Layout layout;
    ParameterDatabase database(&layout);
    ParameterNode editor = database.GetProfileEditor();
    ParameterNode const power = editor.Get(L"Laser").Get(L"Power");
    ParameterView const name = editor.Get(L"Laser").Get(L"Name");
    ParameterNode const nothing;
    ParameterNode const passes = editor.Get(L"Passes");
    PersistentProperties few, many;
    IndexedProperties<PersistentProperties> sequence;
    few.SetValue(L"Number", 1.5);
    few.SetValue(L"Flag", true);
    few.SetValue(L"Text", std::wstring(L"words"));
    few.SetValue(L"File", KelAM::FileContent(L"a.bin", std::vector<std::byte>(3)));
    for (int i = 0; i < 700; ++i) {
        many.SetValue(L"Entry" + std::to_wstring(i), i);
        sequence.AddProperty().SetValue(L"Index", i);
    }
    BuildTicket ticket(&layout);
    ticket.GetDefaults().SetValue(L"Laser.Power", 280.0);
    KelAM::ExternalPropertyID const id(L"{60F9D3FB-5D1C-479E-A7FC-4C8CA7B312D1}");
    ticket.GetPartOverrides().GetProperties(id, true)->SetValue(L"Laser.Power", 310.0);
    ReadReport report;
    ReadFile(database, L"no such folder/file.xml", &report);
    Look();
    return static_cast<int>(nothing.IsValid() || passes.GetSize() != 0 || power.GetReadOnly() ||
                            name.GetReadOnly());
}
