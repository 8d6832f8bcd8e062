// SPDX-License-Identifier: Apache-2.0
#include <zantrel/zantrel.h>

#include <iostream>
#include <string>
#include <utility>

using namespace Zantrel;
using namespace KelAM;

void AddLaserNodes(LayoutNode* parent) {
    parent->AddNode(L"Power", Double, 200.0)->SetPropName(L"Laser.Power");
    parent->AddNode(L"Supports", Bool, true)->SetPropName(L"Laser.Supports");
}

int main() {
    ParameterLayout layout;
    layout.SetName(L"Printer");
    AddLaserNodes(layout.m_platformOptions);  // what the platform decides
    AddLaserNodes(layout.m_partConfigurator); // what a part may override
    layout.AddCategoryNodeIfNeeded();

    DatabaseExternalProperties job;
    ExternalPropertyID const platformId(L"6984637a-7de8-4e0b-9757-787a36fc3a4d");
    ExternalPropertyID const partId(L"{60F9D3FB-5D1C-479E-A7FC-4C8CA7B312D1}");

    ExternalProperties& platform = *job.GetProperties(platformId, true);
    platform.SetValue(PropertyNames::ObjectType, ObjectTypes::ObjectTypePlatform);
    platform.SetValue(L"Laser.Power", 280.0);
    platform.SetValue(L"Laser.Supports", true);

    ExternalProperties& part = *job.GetProperties(partId, true);
    part.SetValue(PropertyNames::ObjectType, ObjectTypes::ObjectTypePartInstance);
    part.SetValue(PropertyNames::PartName, std::wstring(L"Impeller"));
    part.SetValue(L"Laser.Power", 310.0);
    part.SetValue(L"Window.Colour", std::wstring(L"SteelBlue")); // the host's own; no node declares it

    BuildTicket ticket(&layout);
    ticket.ConvertFromInternalBuildTicket(job);
    WriteReport written;
    if (!SaveBuildTicket(L"ticket.xml", ticket, BuildTicketWriteOptions(), &written)) {
        std::wcout << written.Format() << L'\n';
        return 1;
    }

    BuildTicket loaded(&layout);
    ReadReport report;
    if (!LoadBuildTicket(L"ticket.xml", loaded, &report) || !report.m_entries.empty()) {
        return 1;
    }
    for (auto const& [name, property] : loaded.GetDefaults()) {
        std::wcout << L"Platform: " << name << L'\n';
    }
    ExternalPropertyID const sameId(L"60f9d3fb-5d1c-479e-a7fc-4c8ca7b312d1");
    if (ExternalProperties const* found = std::as_const(loaded.GetPartOverrides()).GetProperties(sameId)) {
        std::wcout << found->GetValueOr(PropertyNames::PartName, std::wstring()) << L": "
                   << found->GetValueOr(L"Laser.Power", 0.0) << L" W, colour "
                   << (found->FindProperty(L"Window.Colour") != nullptr ? L"kept" : L"dropped") << L'\n';
    }

    std::wcout << L"Under the key with braces: "
               << (loaded.GetPartOverrides().FindProperty(partId.FormatGuid(true, true)) != nullptr
                       ? L"found"
                       : L"nothing")
               << L"\nUnder FormatGuid(false, false): "
               << (loaded.GetPartOverrides().FindProperty(partId.FormatGuid(false, false)) != nullptr
                       ? L"found"
                       : L"nothing")
               << L'\n';
}
