// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/sax/sax_persist.h>

#include <cstdint>

namespace Zantrel {

/// The version that the ticket asks for by itself, whatever its properties.
std::int32_t LeastVersionOf(BuildTicket const& ticket);

/// Writes a ticket, which is borrowed, as the content of the root of a build ticket file. The version is one
/// of those in which files are written; 0, which stands for the ticket's own choice, has been resolved by
/// then.
class BuildTicketWrite : public ISAXPersistHelper {
public:
    BuildTicketWrite(BuildTicket const& ticket, std::int32_t version)
        : m_ticket(&ticket), m_version(version) {}
    bool Write(KelSAX::ISAXWriter& writer) const override;
    std::int32_t GetVersion() const { return m_version; }

    /// The version that the ticket asks for, found by looking at each of its properties: as yet its
    /// LeastVersionOf.
    std::int32_t _DetermineVersion() const;

private:
    void WriteInfo(KelSAX::ISAXWriter& writer) const;

    BuildTicket const* m_ticket;
    std::int32_t m_version;
};

} // namespace Zantrel
