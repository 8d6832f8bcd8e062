// SPDX-License-Identifier: Apache-2.0
//
// A host that prepares a build: it turns what it knows about a platform and its parts into a ticket, shows
// which parts deviate, saves the ticket in both versions of the format, and proves that each is complete.
//
// To look at: BuildTicket::ConvertFromInternalBuildTicket and CleanUp, in FillTicket;
// ParameterLayout::GetBuildTicketNodesPartOverrides, in TableOf; SaveBuildTicket and LoadBuildTicket with
// their reports, at the end. The rest checks or prints.

#include "build_job.h"
#include "common/host.h"

#include <zantrel/zantrel.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <system_error>
#include <type_traits>
#include <vector>

namespace {

using namespace Zantrel;
using Host::Fail;
using Host::Wide;
using KelAM::DatabaseExternalProperties;
using KelAM::ExternalProperties;
using KelAM::ExternalPropertyID;
using StringConversion::NativeToUtf8;
namespace ObjectTypes = KelAM::ObjectTypes;
namespace PropertyNames = KelAM::PropertyNames;

constexpr char const* Usage =
    "Usage: build_ticket [FOLDER]\n"
    "Makes a platform with twelve instances of three parts, four of which override a default,\n"
    "converts it to a build ticket, shows the overrides and what the ticket dropped, saves it\n"
    "to FOLDER in both versions of the format, and proves that each brings back all defaults,\n"
    "overrides and objects. FOLDER is build_ticket_result in the current folder unless given,\n"
    "and made where it is missing; ticket_1.xml and ticket_2.xml in it are replaced.\n"
    "Exit status: 0 when all that held, 1 when not, 2 for other arguments.\n";

std::vector<std::wstring> IdsOf(DatabaseExternalProperties const& store) {
    std::vector<std::wstring> ids;
    store.GetAllProperties(ids);
    return ids;
}

// --- From the host's database to a ticket ---

/// By reason: how many properties of which name a ticket dropped.
using Dropped = std::map<std::wstring, std::map<std::wstring, int>>;

/// Why a ticket drops the property; empty when it keeps it. `declaring` is the layout node whose tree names
/// what the store may hold: the root for unique parts.
std::wstring ReasonToDrop(std::wstring const& name, IPersistentProperty const& property,
                          LayoutNode const& declaring) {
    std::wstring const type = property.GetType();
    if (name == PropertyNames::ObjectType) {
        return L"needed only to sort the entries";
    }
    if (type == L"PositionMatrix" || type == L"FileContent") {
        return L"of the type " + type;
    }
    if (type == L"SubProperties") {
        return declaring.Parent() == nullptr ? L"component of a unique part" : L"";
    }
    std::set<std::wstring> kept{PropertyNames::PartName};
    declaring.AddUsedPropertyNames(kept);
    return type == L"Properties" || kept.count(name) != 0 ? L"" : L"not declared by the layout";
}

/// Adds what is missing in `after`. Fails when that isn't exactly what a ticket drops, or a value has
/// changed.
void AddDropped(PersistentProperties const& before, PersistentProperties const& after,
                LayoutNode const& declaring, Dropped& dropped) {
    for (auto const& [nameView, property] : before) {
        std::wstring const name(nameView);
        std::wstring const reason = ReasonToDrop(name, *property, declaring);
        IPersistentProperty const* kept = after.FindProperty(name);
        auto const* component = PropertyCast<KelAM::SubProperties>(property);
        auto const* keptComponent = PropertyCast<KelAM::SubProperties>(kept);
        if (reason.empty() != (kept != nullptr)) {
            Fail((reason.empty() ? L"The ticket lost " : L"The ticket should have dropped ") + name);
        }
        if (kept == nullptr) {
            ++dropped[reason][name];
        } else if (component != nullptr && keptComponent != nullptr) {
            AddDropped(component->m_value, keptComponent->m_value, declaring, dropped);
        } else if (!kept->IsEqual(property)) {
            Fail(L"The ticket changed " + name);
        }
    }
}

void AddDroppedOfEntry(ExternalProperties const& entry, BuildTicket const& ticket, Dropped& dropped) {
    ParameterLayout const& layout = *ticket.GetLayout();
    struct {
        std::wstring const& objectType;
        ExternalProperties const* store;
        LayoutNode const* declaring;
    } const targets[] = {
        {ObjectTypes::ObjectTypePlatform, &ticket.GetDefaults(), layout.m_platformConfigurator},
        {ObjectTypes::ObjectTypePartInstance, ticket.GetPartOverrides().GetProperties(entry.m_id),
         layout.m_partConfigurator},
        {ObjectTypes::ObjectTypeUniquePart, ticket.GetObjectProperties().GetProperties(entry.m_id), &layout},
    };
    std::wstring const type = entry.GetValueOr(PropertyNames::ObjectType, std::wstring());
    for (auto const& [objectType, store, declaring] : targets) {
        if (type == objectType) {
            if (store == nullptr || store->m_id != entry.m_id || store->m_objectKind != entry.m_objectKind) {
                Fail(L"The ticket lost the entry " + entry.m_id.FormatGuid(false, false));
            }
            return AddDropped(entry, *store, *declaring, dropped);
        }
    }
    ++dropped[L"whole entry of another type"][type];
}

void FillTicket(BuildTicket& ticket) {
    DatabaseExternalProperties const database = BuildJob::MakeDatabase();
    ticket.ConvertFromInternalBuildTicket(database);
    ExternalProperties const& late = BuildJob::ChangeLate(ticket);
    ExternalProperties const beforeCleanUp = late;
    ticket.CleanUp();

    Dropped dropped;
    AddDropped(beforeCleanUp, late, *ticket.GetLayout()->m_partConfigurator, dropped);
    for (std::wstring const& id : IdsOf(database)) {
        AddDroppedOfEntry(*database.GetProperties(ExternalPropertyID(id)), ticket, dropped);
    }
    std::cout << "Dropped on the way from the host's database to the ticket, and nothing else:\n";
    for (auto const& [reason, names] : dropped) {
        std::wstring line;
        for (auto const& [name, count] : names) {
            line += (line.empty() ? L": " : L", ") + std::to_wstring(count) + L' ' + name;
        }
        std::cout << "  " << NativeToUtf8(reason + line) << '\n';
    }
}

// --- The table ---

using Row = std::vector<std::wstring>;

/// By the type that the layout declares. A ticket may hold another under the name, since nothing compares the
/// two; then the cell stays empty.
std::wstring TextOf(IPersistentProperty const* property, LayoutNode const& node) {
    std::wstring text;
    VisitValueType(node.m_type, [&](auto tag) {
        using T = typename decltype(tag)::Type;
        if constexpr (!std::is_same_v<T, NoValue> && !std::is_same_v<T, KelAM::FileContent>) {
            auto const* const typed = PropertyCast<T>(property);
            text = typed != nullptr ? node.FormatValue(typed->m_value) : text;
        }
    });
    return text + (node.m_postfix.empty() ? L"" : L' ' + node.m_postfix);
}

/// The property that `node` declares, behind a mark when it isn't the default; a dot where there is none.
std::wstring CellOf(LayoutNode const& node, PersistentProperties const& own,
                    PersistentProperties const& defaults) {
    IPersistentProperty const* property = own.FindProperty(node.m_propName);
    if (property == nullptr) {
        return L"  \u00B7";
    }
    bool const isSame = property->IsEqual(defaults.FindProperty(node.m_propName));
    wchar_t const* mark = &own == &defaults ? L"  " : isSame ? L"= " : L"* ";
    return mark + TextOf(property, node);
}

/// A line for each instance below two for the names of the properties and one for the defaults.
std::vector<Row> TableOf(BuildTicket const& ticket) {
    std::vector<LayoutNode const*> columns;
    ticket.GetLayout()->GetBuildTicketNodesPartOverrides(columns);
    columns.erase(std::remove_if(columns.begin(), columns.end(), [](auto* node) { return !node->m_visible; }),
                  columns.end());

    std::vector<Row> rows;
    for (std::wstring const& id : IdsOf(ticket.GetPartOverrides())) {
        ExternalProperties const& own = *ticket.GetPartOverrides().GetProperties(ExternalPropertyID(id));
        ExternalPropertyID const part(own.GetValueOr(BuildJob::UniquePart, std::wstring()));
        ExternalProperties const* unique = ticket.GetObjectProperties().GetProperties(part);
        std::wstring const unknown = L"?";
        rows.push_back({unique ? unique->GetValueOr(PropertyNames::PartName, unknown) : unknown,
                        own.GetValueOr(PropertyNames::PartName, unknown)});
        for (LayoutNode const* node : columns) {
            rows.back().push_back(CellOf(*node, own, ticket.GetDefaults()));
        }
    }
    std::sort(rows.begin(), rows.end()); // they came in the order of identifiers

    Row families{L"", L""};
    Row names{L"unique part", L"instance"};
    Row defaults{L"defaults", L""};
    for (LayoutNode const* node : columns) {
        std::size_t const split = node->m_propName.find(L'.') + 1;
        families.push_back(L"  " + node->m_propName.substr(0, split));
        names.push_back(L"  " + node->m_propName.substr(split));
        defaults.push_back(CellOf(*node, ticket.GetDefaults(), ticket.GetDefaults()));
    }
    rows.insert(rows.begin(), {families, names, defaults});
    return rows;
}

void ShowTable(std::vector<Row> const& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (Row const& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    for (Row const& row : rows) {
        std::wstring line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i] + std::wstring(widths[i] - row[i].size() + 1, L' ');
        }
        std::cout << NativeToUtf8(line.substr(0, line.find_last_not_of(L' ') + 1)) << '\n';
    }
}

// --- The files ---

void Require(bool holds, wchar_t const* what, std::wstring const& path) {
    if (!holds) {
        Fail(what + (L" came back changed from " + path));
    }
}

void RequireEqual(DatabaseExternalProperties const& saved, DatabaseExternalProperties const& loaded,
                  wchar_t const* what, std::wstring const& path) {
    Require(loaded == saved, what, path); // the same identifiers, each with the same properties
    for (std::wstring const& text : IdsOf(saved)) {
        ExternalPropertyID const id(text);
        auto const* entry = loaded.GetProperties(id);
        Require(entry->m_objectKind == saved.GetProperties(id)->m_objectKind && entry->m_id == id, what,
                path);
    }
}

/// Loads a ticket and compares all that the version carries: the source only in version 2, and in neither
/// the kind and the identifier of the defaults.
void RequireEqual(BuildTicket const& saved, std::wstring const& path, std::int32_t version) {
    BuildTicket loaded(saved.GetLayout());
    ReadReport report;
    if (!LoadBuildTicket(path, loaded, &report)) {
        Host::FailToRead(path, report);
    }
    if (!report.m_entries.empty()) {
        Fail(L"What was written is not taken whole: " + Host::TextOf(path, report.m_entries.front()));
    }
    Require(version == 1 || loaded.GetSourceId() == saved.GetSourceId(), L"The source", path);
    Require(loaded.GetDefaults() == saved.GetDefaults(), L"The defaults", path);
    RequireEqual(saved.GetPartOverrides(), loaded.GetPartOverrides(), L"An override", path);
    RequireEqual(saved.GetObjectProperties(), loaded.GetObjectProperties(), L"A unique part", path);
}

void SaveAndProve(BuildTicket const& ticket, std::filesystem::path const& file, std::int32_t version) {
    BuildTicketWriteOptions options;
    options.m_version = version;
    WriteReport report;
    if (!SaveBuildTicket(Wide(file), ticket, options, &report)) {
        Fail(report.Format());
    }
    RequireEqual(ticket, Wide(file), version);
    std::cout << "  " << NativeToUtf8(Wide(file)) << ", " << std::filesystem::file_size(file)
              << " bytes: equal after loading\n";
}

void RunIn(std::filesystem::path const& folder) {
    BuildJob::Layout const layout;
    BuildTicket ticket(&layout);
    FillTicket(ticket);
    std::cout << "\nThe ticket; * deviates from the default, = is overridden with the same value:\n\n";
    ShowTable(TableOf(ticket));

    std::error_code ignored; // where no folder can be made, the first write says why
    std::filesystem::create_directories(folder, ignored);
    std::cout << "\nSaved with " << ticket.GetDefaults().GetNumProperties() << " defaults, "
              << ticket.GetPartOverrides().GetNumProperties() << " part instances and "
              << ticket.GetObjectProperties().GetNumProperties() << " unique parts, in both versions:\n";
    SaveAndProve(ticket, folder / "ticket_1.xml", 1);
    SaveAndProve(ticket, folder / "ticket_2.xml", 2);
}

int Run(Host::Arguments const& arguments) {
    if (arguments == Host::Arguments{"--help"}) {
        std::cout << Usage;
        return 0;
    }
    if (arguments.size() > 1 || (arguments.size() == 1 && arguments[0][0] == '-')) {
        std::cerr << Usage;
        return 2;
    }
    RunIn(Host::PathOf(arguments.empty() ? "build_ticket_result" : arguments[0]));
    return 0;
}

} // namespace

int main(int argc, char** argv) { return Host::Main("build_ticket", argc, argv, Run); }
