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
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace Paramtool {

namespace {

using namespace Zantrel;

/// In the fewest digits that are this number, so that two that differ never look the same.
std::wstring TextOf(double number) {
    char digits[32];
    return std::wstring(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// Its name, and enough to tell it from another one.
std::wstring TextOf(KelAM::FileContent const& file) {
    std::uint64_t sum = 14695981039346656037U; // FNV-1a
    for (auto const byte : file.m_data) {
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    }
    char digits[16];
    return file.m_name + L", " + std::to_wstring(file.m_data.size()) + L" bytes, checksum " +
           std::wstring(digits, std::to_chars(digits, digits + sizeof digits, sum, 16).ptr);
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
    if (auto const* const file = PropertyCast<KelAM::FileContent>(&property)) {
        return TextOf(file->m_value);
    }
    return property.GetType();
}

struct Bag {
    PersistentProperties const* bag;
    std::wstring path; ///< of what stands in it, with a "/" at its end
};

/// Those that a property consists of; none for a single value, and for a sequence of none.
std::vector<Bag> BagsIn(IPersistentProperty const& property, std::wstring const& path) {
    if (auto const* const bag = PropertyCast<PersistentProperties>(&property)) {
        return {{&bag->m_value, path + L'/'}};
    }
    if (auto const* const component = PropertyCast<KelAM::SubProperties>(&property)) {
        return {{&component->m_value, path + L'/'}};
    }
    if (auto const* const object = PropertyCast<KelAM::ExternalProperties>(&property)) {
        return {{&object->m_value, path + L'/'}};
    }
    std::vector<Bag> bags;
    if (auto const* const items = PropertyCast<IndexedProperties<PersistentProperties>>(&property)) {
        auto const count = static_cast<std::int32_t>(items->m_value.GetNumProperties());
        for (std::int32_t i = 0; i < count; ++i) {
            bags.push_back({&items->m_value.GetProperty(i), path + L'[' + std::to_wstring(i) + L"]/"});
        }
    }
    return bags;
}

/// A path with its middle left out where it is long: all that stands below begins with it, so that a small
/// file that nests deeply would else fill the memory.
std::wstring Shortened(std::wstring path) {
    constexpr std::size_t longest = 1000, kept = 400;
    return path.size() <= longest ? std::move(path)
                                  : path.substr(0, kept) + L"..." + path.substr(path.size() - kept);
}

/// Without recursion, since files may nest deeply.
void AddFacts(PersistentProperties const& top, std::wstring const& section, TicketFacts& facts) {
    std::vector<Bag> open{{&top, L""}};
    while (!open.empty()) {
        Bag const bag = std::move(open.back());
        open.pop_back();
        if (bag.bag->begin() == bag.bag->end() && !bag.path.empty()) {
            facts.emplace(std::pair(section, bag.path), L"empty");
        }
        // Names of one bag may repeat: counted, so that each has a path of its own.
        std::map<std::wstring, std::size_t> met;
        for (auto const& [name, property] : *bag.bag) {
            if (property->IsDeleted()) {
                continue;
            }
            std::wstring path = bag.path + std::wstring(name);
            std::size_t const earlier = met[path]++;
            path += earlier == 0 ? L"" : L'#' + std::to_wstring(earlier + 1); // a further one of this name
            std::vector<Bag> inner = BagsIn(*property, Shortened(path));
            if (inner.empty()) {
                facts.emplace(std::pair(section, std::move(path)), TextOf(*property));
            }
            open.insert(open.end(), inner.begin(), inner.end());
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

BuildTicket ReadTicket(Output& output, std::wstring const& path, std::wstring const& part) {
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
    // Not refused: a part that overrides nothing needs no entry in a ticket.
    if (!part.empty() &&
        ticket.GetPartOverrides().GetProperties(KelAM::ExternalPropertyID(part)) == nullptr) {
        output.Tell({Editing::Severity::Note, input.Name(), 0, 0,
                     L"There are no overrides of a part " + part + L'.', L""});
    }
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
