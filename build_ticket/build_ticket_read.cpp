// SPDX-License-Identifier: Apache-2.0
#include "build_ticket/build_ticket_read.h"

#include "build_ticket/ticket_words.h"
#include "sax/report_texts.h"
#include "store/property_set_sax.h"

#include <zantrel/sax/sax_reader.h>

namespace Zantrel {

namespace Word = TicketWord;

bool BuildTicketRead::HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) {
    struct Rule {
        std::string_view tag;
        bool (BuildTicketRead::*read)(KelSAX::ISAXReader& reader);
    };
    static constexpr Rule grammar[] = {
        {Word::Info, &BuildTicketRead::PassThrough},
        {Word::Source, &BuildTicketRead::ReadSource},
        {Word::Defaults, &BuildTicketRead::ReadDefaults},
        {Word::PartOverrides, &BuildTicketRead::PassThrough},
        {Word::ObjectProperties, &BuildTicketRead::PassThrough},
        {Word::Instance, &BuildTicketRead::ReadInstance},
    };
    for (Rule const& rule : grammar) {
        if (tag == rule.tag) {
            return (this->*rule.read)(reader);
        }
    }
    return reader.GetDepth() == 0; // the root, which may have any name
}

/// What the element holds comes to this handler.
bool BuildTicketRead::PassThrough(KelSAX::ISAXReader& reader) {
    Sax::NoteStrayText(reader);
    return true;
}

bool BuildTicketRead::ReadSource(KelSAX::ISAXReader& reader) {
    m_ticket->m_sourceId.clear(); // a source without a name is told too
    reader.ReadAttribute(m_ticket->m_sourceId, Word::Id);
    reader.KnowAttributes({Word::PropertyTemplate});
    return PassThrough(reader);
}

bool BuildTicketRead::ReadDefaults(KelSAX::ISAXReader& reader) {
    reader.KnowAttributes({Word::Kind}); // which is written, but never read
    ReadStore(m_ticket->m_defaults, reader);
    return true;
}

bool BuildTicketRead::ReadInstance(KelSAX::ISAXReader& reader) {
    std::wstring uuid;
    // Both sections call their elements the same, so that only the one around it tells which store an
    // instance is.
    std::string const& parent = reader.GetAncestorTag(1);
    bool const isPart = parent == Word::PartOverrides;
    if (!reader.ReadAttribute(uuid, Word::Uuid) || (!isPart && parent != Word::ObjectProperties)) {
        reader.NoteDropped(L"An instance without an identifier or outside of its sections was passed over.");
        return false;
    }
    auto& stores = isPart ? m_ticket->m_partOverrides : m_ticket->m_objectProperties;
    KelAM::ExternalProperties& store = *stores.GetProperties(KelAM::ExternalPropertyID(uuid), true);
    ReadKind(store, reader);
    ReadStore(store, reader);
    return true;
}

/// A word that is none of the format's leaves the kind that the store has.
void BuildTicketRead::ReadKind(KelAM::ExternalProperties& store, KelSAX::ISAXReader& reader) {
    auto const word = reader.FindAttribute(Word::Kind);
    if (!word) {
        return;
    }
    for (Word::ObjectKind const& known : Word::ObjectKinds) {
        if (known.word == *word) {
            store.m_objectKind = known.kind;
            return;
        }
    }
    if (reader.HasReport()) {
        reader.NoteDropped(L"The kind of instance \"" + Sax::Excerpt(*word) +
                           L"\" is not known here and was passed over.");
    }
}

void BuildTicketRead::ReadStore(KelAM::ExternalProperties& store, KelSAX::ISAXReader& reader) {
    Sax::NoteStrayText(reader);
    reader.PushHandler(new PropertySetRead(&store, &m_names, m_expected));
}

} // namespace Zantrel
