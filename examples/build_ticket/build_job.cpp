// SPDX-License-Identifier: Apache-2.0
//
// The data of the example: a layout, made of the sample layout and further parameters, and a host's own
// database of a platform with twelve part instances, of which four override a default.
//
// To look at: how a host's own class becomes a property (the five specialisations for Position),
// ExternalProperties::SetValue and GetValuePointer, which fill a store, and LayoutNode::SetPropName, which
// says under what name a parameter stands in tickets: of plain values a ticket keeps only what a node
// declares so.

#include "build_job.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

using KelAM::DatabaseExternalProperties;
using KelAM::ExternalProperties;
using KelAM::ExternalPropertyID;
using KelAM::FileContent;

namespace {

/// Where a part stands: a rotation and a shift in millimetres. A class of the host's own, which the library
/// keeps as a property without knowing it; a ticket drops it by its type name.
struct Position : std::array<double, 12> {};

} // namespace

// What the library asks of such a class. This one has a binary form only.
template <> std::wstring GetTypeOfProperty(Position const&) { return L"PositionMatrix"; }
template <> bool WriteValueOfProperty(Position const&, KelSAX::ISAXWriter&) { return false; }
template <> bool HandleValueOfProperty(Position&, KelSAX::ISAXReader&) { return false; }
template <> void WriteValueOfProperty(Position const& value, MFile& file) {
    file.Write(value.data(), sizeof value);
}
template <> void ReadValueOfProperty(Position& value, MFile& file) { file.Read(value.data(), sizeof value); }

namespace BuildJob {

namespace {

using Type = Zantrel::eTypeLayoutNode;

struct Part {
    std::wstring id; ///< all but the last digit: 0 is the part itself, its instances count from 1
    std::wstring name;
};

Part const Impeller{L"60f9d3fb-5d1c-479e-a7fc-4c8ca7b312d", L"Impeller"};
Part const Plate{L"e6146788-b2ab-4eff-96fb-a0ab44770f8", L"K\u00FChlplatte"}; // Kühlplatte
Part const Bar{L"134b1de6-8d3c-49d3-83e0-1854fbded67", L"Tensile bar"};

ExternalPropertyID IdOf(Part const& part, int number) {
    return ExternalPropertyID(part.id + std::to_wstring(number));
}

/// An entry with what every entry of this host has. The object type tells a ticket where to put it.
ExternalProperties& AddEntry(DatabaseExternalProperties& database, ExternalPropertyID const& id,
                             std::wstring const& objectType, std::int32_t kind, std::wstring const& name) {
    ExternalProperties& entry = *database.GetProperties(id, true);
    entry.m_objectKind = kind;
    entry.SetValue(KelAM::PropertyNames::ObjectType, objectType);
    entry.SetValue(KelAM::PropertyNames::PartName, name);
    entry.SetValue(L"Host.Selected", false);
    entry.SetValue(L"Host.Colour", std::wstring(L"SteelBlue"));
    return entry;
}

/// A component is a nested set under a GUID: in braces and upper case, as reading a ticket names it.
void AddComponent(ExternalProperties& entry, std::wstring const& guid, std::wstring const& name) {
    std::wstring const key = ExternalPropertyID(guid).FormatGuid(true, true);
    PersistentProperties& component = *entry.GetValuePointer<KelAM::SubProperties>(key, true);
    component.SetValue(KelAM::PropertyNames::PartName, name);
    component.SetValue(L"PowderBed.HatchSpacing", 0.16);
    component.SetValue<std::int32_t>(L"Host.Layer", 7);
}

void AddPlatform(DatabaseExternalProperties& database) {
    ExternalProperties& platform =
        AddEntry(database, ExternalPropertyID(L"6984637a-7de8-4e0b-9757-787a36fc3a4d"),
                 KelAM::ObjectTypes::ObjectTypePlatform, 1, L"Platform 250 x 250");
    platform.SetValue(L"BasicProcessor.ProfileExport", std::wstring(L"Default"));
    platform.SetValue(L"PowderBed.HatchSpacing", 0.1);
    platform.SetValue<std::int32_t>(L"PowderBed.Contours", 2);
    platform.SetValue(L"PowderBed.Downskin", std::wstring(L"Standard"));
    platform.SetValue(L"PowderBed.Supports", true);
    auto& zones =
        *platform.GetValuePointer<IndexedProperties<PersistentProperties>>(L"PowderBed.Zones", true);
    zones.AddProperty().SetValue(L"Temperature", 200.0);
    zones.AddProperty().SetValue(L"Temperature", 500.0 / 3.0);
    platform.SetValue(L"Host.Thumbnail", FileContent(L"platform.png", {std::byte{0x89}, std::byte{'P'}}));
}

void AddPart(DatabaseExternalProperties& database, Part const& part, double y) {
    ExternalProperties& unique =
        AddEntry(database, IdOf(part, 0), KelAM::ObjectTypes::ObjectTypeUniquePart, 3, part.name);
    unique.SetValue(L"PowderBed.Supports", true);
    // A bag is kept even if the layout doesn't declare it; a component of a unique part never is.
    unique.GetValuePointer<PersistentProperties>(L"Mesh", true)->SetValue(L"File", part.name + L".3mf");
    AddComponent(unique, L"2a6787a4-198e-4531-a642-906a7da2ebab", L"Shell");
    for (int number = 1; number <= 4; ++number) {
        ExternalProperties& instance =
            AddEntry(database, IdOf(part, number), KelAM::ObjectTypes::ObjectTypePartInstance, 2,
                     part.name + L' ' + std::to_wstring(number));
        instance.SetValue(UniquePart, IdOf(part, 0).FormatGuid(false, false));
        instance.SetValue(L"Host.Position", Position{{{1, 0, 0, 0, 1, 0, 0, 0, 1, 50.0 * number, y, 0}}});
    }
}

// Overrides go into the entries of part instances, beside what the host itself knows of them: an instance
// without any stands in the ticket all the same.
void AddOverrides(DatabaseExternalProperties& database) {
    ExternalProperties& fine = *database.GetProperties(IdOf(Impeller, 2), true);
    fine.SetValue(L"BasicProcessor.ProfileExport", std::wstring(L"Fine"));
    fine.SetValue(L"PowderBed.HatchSpacing", 0.08);
    database.GetProperties(IdOf(Impeller, 4), true)->SetValue<std::int32_t>(L"PowderBed.Contours", 3);
    ExternalProperties& open = *database.GetProperties(IdOf(Plate, 1), true);
    open.SetValue(L"PowderBed.HatchSpacing", 0.1); // stays, should the default change one day
    open.SetValue(L"PowderBed.Supports", false);
    AddComponent(open, L"0559268e-22c2-41a6-8505-951f84e6c0c6", L"Lattice");
}

} // namespace

Layout::Layout() : Zantrel::Sample::ParameterLayout(2) {
    // The same names for the platform, which gives the default, and for a part, which may differ.
    for (Zantrel::LayoutNode* parent : {m_platformOptions.GetNode(), m_partConfigurator.GetNode()}) {
        parent->AddNode(L"HatchSpacing", Type::Distance, 0.1)
            ->SetPrecision(2)
            ->SetPostfix(L"mm")
            ->SetPropName(L"PowderBed.HatchSpacing");
        parent->AddNode(L"Contours", Type::Int, 2)->SetPropName(L"PowderBed.Contours");
        parent->AddNode(L"Downskin", Type::String, L"Standard")->SetPropName(L"PowderBed.Downskin");
        parent->AddNode(L"Supports", Type::Bool, true)->SetPropName(L"PowderBed.Supports");
    }
    m_platformOptions->AddNode(L"Zones")->SetList(true, L"Zone", L"Zone")->SetPropName(L"PowderBed.Zones");
    // Of no interest to an editor, but declared all the same: or else a ticket would drop it.
    m_partConfigurator->AddNode(L"UniquePart", Type::String, L"")->SetVisible(false)->SetPropName(UniquePart);
    AddCategoryNodeIfNeeded();
}

// The entry at the end is of an object type that tickets don't know: it is there to be dropped as a whole.
DatabaseExternalProperties MakeDatabase() {
    DatabaseExternalProperties database;
    AddPlatform(database);
    AddPart(database, Impeller, 50.0);
    AddPart(database, Plate, 120.0);
    AddPart(database, Bar, 190.0);
    AddOverrides(database);
    AddEntry(database, ExternalPropertyID(L"6bdd7130-6503-47dd-b227-52ff22281972"), L"Host.Camera", 0,
             L"Top");
    return database;
}

// After the conversion nothing filters by itself what a host adds to the ticket. Of these two the photo goes
// only with the next CleanUp.
ExternalProperties& ChangeLate(Zantrel::BuildTicket& ticket) {
    ExternalProperties& bar = *ticket.GetPartOverrides().GetProperties(IdOf(Bar, 3), true);
    bar.SetValue(L"PowderBed.Downskin", std::wstring(L"Smooth"));
    bar.SetValue(L"Photo", FileContent(L"bar.jpg", {std::byte{0xFF}, std::byte{0xD8}}));
    return bar;
}

} // namespace BuildJob
