// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/shared_names.h"

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/sax/sax_persist.h>

namespace Zantrel {

/// Adds what a build ticket file holds to a ticket, which is borrowed. The sections may come in any order.
/// Tags are compared as they stand: one with a prefix is unknown.
class BuildTicketRead : public ISAXPersistHelper {
public:
    explicit BuildTicketRead(BuildTicket& ticket) : m_ticket(&ticket) {}
    bool HandleTag(std::string const& tag, KelSAX::ISAXReader& reader) override;

private:
    void ReadSource(KelSAX::ISAXReader& reader);
    bool ReadInstance(KelSAX::ISAXReader& reader);
    void ReadStore(KelAM::ExternalProperties& store, KelSAX::ISAXReader& reader);

    BuildTicket* m_ticket;
    SharedNames m_names; ///< for all three stores: they belong to one thread, as their ticket does
};

} // namespace Zantrel
