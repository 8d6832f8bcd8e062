// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "command_line.h"

#include <zantrel/zantrel.h>

#include <map>
#include <string>
#include <utility>

namespace Paramtool {

/// Reads a build ticket. Fails when the file is none; tells when it has nothing of `part`, unless that is
/// empty.
Zantrel::BuildTicket ReadTicket(Output& output, std::wstring const& path, std::wstring const& part);

/// What a ticket holds: texts by section ("defaults", "part GUID", "object GUID") and path of the property.
/// Names may hold what joins them, and so a path may be that of several.
using TicketFacts = std::multimap<std::pair<std::wstring, std::wstring>, std::wstring>;
TicketFacts FactsOf(Zantrel::BuildTicket const& ticket, std::wstring const& part);

} // namespace Paramtool
