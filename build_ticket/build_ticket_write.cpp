// SPDX-License-Identifier: Apache-2.0
#include "build_ticket/build_ticket_write.h"

#include "build_ticket/ticket_words.h"
#include "store/property_set_sax.h"

#include <zantrel/sax/tag_writer.h>
#include <zantrel/store/sub_properties.h>
#include <zantrel/text/stream_text_out.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Zantrel {

namespace Word = TicketWord;

namespace {

using Sequence = IndexedProperties<PersistentProperties>;

/// In lower case and without braces, whatever the form of the key or name. So the same store is written
/// alike, be it a host's or one that was read, whose components have names in braces and upper case.
void WriteUuid(std::wstring_view text, KelSAX::ISAXWriter& writer) {
    KelAM::ExternalPropertyID const id{std::wstring(text)};
    writer.WriteAttribute(Word::Uuid, std::wstring_view(id.FormatGuid(false, false)));
}

/// The nested sets that stand for components, which come behind all other properties of their store. Only
/// those directly in a store have an element of their own.
void WriteComponents(KelAM::ExternalProperties const& store, KelSAX::ISAXWriter& writer) {
    for (auto const& [name, property] : store) {
        if (property->IsDeleted() || !IsComponent(name, *property)) {
            continue;
        }
        if (auto const* const set = PropertyCast<KelAM::SubProperties>(property)) {
            MSAXTagWriter const element(writer, Word::Component);
            WriteUuid(name, writer);
            WriteProperties(set->m_value, writer);
        }
    }
}

void WriteStore(KelAM::ExternalProperties const& store, KelSAX::ISAXWriter& writer, PropertyTags& tags) {
    for (Word::ObjectKind const& known : Word::ObjectKinds) {
        if (known.kind == store.m_objectKind) {
            writer.WriteAttribute(Word::Kind, known.word);
        }
    }
    if (WriteStoreProperties(store, writer, tags)) {
        WriteComponents(store, writer);
    }
}

void WriteInstances(std::string_view section, KelAM::DatabaseExternalProperties const& stores,
                    KelSAX::ISAXWriter& writer, PropertyTags& tags) {
    if (stores.IsEmpty()) {
        return;
    }
    MSAXTagWriter const element(writer, section);
    KelSAX::PreparedTag const tag(Word::Instance);
    for (auto const& [key, property] : stores) {
        if (auto const* const store = PropertyCast<KelAM::ExternalProperties>(property)) {
            MSAXTagWriter const instance(writer, tag);
            WriteUuid(key, writer);
            WriteStore(store->m_value, writer, tags);
        }
    }
}

/// The version from which on a property can be written: as yet the first for each.
std::int32_t VersionOf(IPersistentProperty const&) { return 1; }

void AppendBagsOf(IPersistentProperty const& property, std::vector<PersistentProperties const*>& bags) {
    auto const* const value = property.GetPolymorphicValue(); // null for plain data, as nearly all is
    if (value == nullptr) {
        return;
    }
    if (auto const* const bag = dynamic_cast<PersistentProperties const*>(value)) {
        bags.push_back(bag);
    } else if (auto const* const sequence = dynamic_cast<Sequence const*>(value)) {
        for (unsigned long long i = 0; i < sequence->GetNumProperties(); ++i) {
            bags.push_back(&sequence->GetProperty(static_cast<std::int32_t>(i)));
        }
    }
}

/// The version from which on all can be written that a bag holds, at every depth. The bags still to be looked
/// at stand in a list, since a host nests them as deep as it likes.
std::int32_t _DetermineVersionOfProperties(PersistentProperties const& top) {
    std::int32_t version = 1;
    std::vector<PersistentProperties const*> open{&top};
    while (!open.empty()) {
        PersistentProperties const& bag = *open.back();
        open.pop_back();
        for (auto const& [name, property] : bag) {
            version = std::max(version, VersionOf(*property));
            AppendBagsOf(*property, open);
        }
    }
    return version;
}

} // namespace

// That a ticket has no property template can only be said in version 2, which alone has an element for it.
std::int32_t LeastVersionOf(BuildTicket const& ticket) { return ticket.HasPropertyTemplate() ? 1 : 2; }

std::int32_t BuildTicketWrite::_DetermineVersion() const {
    std::int32_t version = LeastVersionOf(*m_ticket);
    version = std::max(version, _DetermineVersionOfProperties(m_ticket->GetDefaults()));
    for (auto const* const stores : {&m_ticket->GetPartOverrides(), &m_ticket->GetObjectProperties()}) {
        for (auto const& [key, property] : *stores) {
            if (auto const* const store = PropertyCast<KelAM::ExternalProperties>(property)) {
                version = std::max(version, _DetermineVersionOfProperties(store->m_value));
            }
        }
    }
    return version;
}

bool BuildTicketWrite::Write(KelSAX::ISAXWriter& writer) const {
    if (m_version == 2) {
        WriteInfo(writer);
    }
    PropertyTags tags;
    if (!m_ticket->GetDefaults().IsEmpty()) {
        MSAXTagWriter const element(writer, Word::Defaults);
        WriteStore(m_ticket->GetDefaults(), writer, tags);
    }
    WriteInstances(Word::PartOverrides, m_ticket->GetPartOverrides(), writer, tags);
    WriteInstances(Word::ObjectProperties, m_ticket->GetObjectProperties(), writer, tags);
    return true;
}

void BuildTicketWrite::WriteInfo(KelSAX::ISAXWriter& writer) const {
    MSAXTagWriter const info(writer, Word::Info);
    MSAXTagWriter const source(writer, Word::Source);
    if (!m_ticket->GetSourceId().empty()) {
        writer.WriteAttribute(Word::Id, std::wstring_view(m_ticket->GetSourceId()));
    }
    writer.WriteAttribute(Word::PropertyTemplate,
                          (MStreamTextOut<char>() << m_ticket->HasPropertyTemplate()).str());
}

} // namespace Zantrel
