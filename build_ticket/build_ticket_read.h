// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/bag_access.h"
#include "store/property_set_sax.h"

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/sax/sax_persist.h>

namespace Zantrel {

/// Adds what a build ticket file holds to a ticket, which is borrowed. The sections may come in any order,
/// and all stay with this handler: that an instance stands in one is asked of its parent's tag. A store's
/// content goes to a handler of bags. Tags are compared as they stand: one with a prefix is unknown.
class BuildTicketRead : public ISAXPersistHelper {
public:
    explicit BuildTicketRead(BuildTicket& ticket) : m_ticket(&ticket) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    // The elements of the grammar. True: the element was taken.
    bool PassThrough(KelSAX::ISAXReader& reader);
    bool ReadSource(KelSAX::ISAXReader& reader);
    bool ReadDefaults(KelSAX::ISAXReader& reader);
    bool ReadInstance(KelSAX::ISAXReader& reader);
    void ReadKind(KelAM::ExternalProperties& store, KelSAX::ISAXReader& reader);
    void ReadStore(KelAM::ExternalProperties& store, KelSAX::ISAXReader& reader);

    BuildTicket* m_ticket;
    SharedNames m_names;           ///< for all three stores: they belong to one thread, as their ticket does
    ExpectedProperties m_expected; ///< of one store after another
};

} // namespace Zantrel
