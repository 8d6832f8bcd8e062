// SPDX-License-Identifier: Apache-2.0
//
// A ticket as a list of facts.
//
// To look at: LoadBuildTicket; the bags of a ticket, which loops can list; PropertyCast, by which a property
// of unknown type is asked for its value.

#include "tickets.h"

#include "common/host.h"
#include "files.h"

#include <charconv>
#include <optional>
#include <vector>

namespace Paramtool {

namespace {

using namespace Zantrel;

/// In the fewest digits that are this number, so that two that differ never look the same.
std::wstring TextOf(double number) {
    char digits[32];
    return std::wstring(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// The value; of what is none of these the type's name.
std::wstring TextOf(IPersistentProperty const& property) {
    if (auto const* const number = PropertyCast<double>(&property)) {
        return TextOf(number->m_value);
    }
    if (auto const* const number = PropertyCast<std::int32_t>(&property)) {
        return std::to_wstring(number->m_value);
    }
    if (auto const* const flag = PropertyCast<bool>(&property)) {
        return flag->m_value ? L"true" : L"false";
    }
    if (auto const* const text = PropertyCast<std::wstring>(&property)) {
        return L'"' + text->m_value + L'"';
    }
    return property.GetType();
}

struct Bag {
    PersistentProperties const* bag;
    std::wstring path; ///< of what stands in it, with a "/" at its end
};

/// Without recursion, since files may nest deeply.
void AddFacts(PersistentProperties const& top, std::wstring const& section, TicketFacts& facts) {
    std::vector<Bag> open{{&top, L""}};
    while (!open.empty()) {
        Bag const bag = std::move(open.back());
        open.pop_back();
        // Names of one bag may repeat. Counted, so that each has a path of its own and none hides another one
        // in the map of facts.
        std::map<std::wstring, std::size_t> met;
        for (auto const& [name, property] : *bag.bag) {
            std::wstring path = bag.path + std::wstring(name);
            std::size_t const earlier = met[path]++;
            path += earlier == 0 ? L"" : L'#' + std::to_wstring(earlier + 1); // a further one of this name
            if (auto const* const inner = PropertyCast<PersistentProperties>(property)) {
                open.push_back({&inner->m_value, path + L'/'});
            } else if (!property->IsDeleted()) {
                facts[{section, path}] = TextOf(*property);
            }
        }
    }
}

void AddStores(KelAM::DatabaseExternalProperties const& stores, std::wstring const& word,
               std::wstring const& only, TicketFacts& facts) {
    for (auto const& [key, property] : stores) {
        if (auto const* const store = PropertyCast<KelAM::ExternalProperties>(property)) {
            // By its value, since a GUID can be spelt in several ways.
            if (only.empty() || store->m_value.m_id == KelAM::ExternalPropertyID(only)) {
                AddFacts(store->m_value, word + std::wstring(key), facts);
            }
        }
    }
}

} // namespace

BuildTicket ReadTicket(Output& output, std::wstring const& path) {
    InputFile const input(path);
    FileSort const sort = SortOf(input.Path());
    if (sort.kind != FileKind::Ticket) {
        Host::Fail(input.Name() + L" is " + WordsOf(sort.kind) + L" with the root \"" + sort.root +
                   L"\", no build ticket");
    }
    BuildTicket ticket(nullptr);
    ReadReport report;
    if (!LoadBuildTicket(input.Path(), ticket, &report)) {
        Host::FailToRead(input.Name(), report);
    }
    TellPassedOver(output, input.Name(), report);
    return ticket;
}

TicketFacts FactsOf(BuildTicket const& ticket, std::wstring const& part) {
    TicketFacts facts;
    if (part.empty()) {
        AddFacts(ticket.GetDefaults(), L"defaults", facts);
        AddStores(ticket.GetObjectProperties(), L"object ", L"", facts);
    }
    AddStores(ticket.GetPartOverrides(), L"part ", part, facts);
    return facts;
}

} // namespace Paramtool
