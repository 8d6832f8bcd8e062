// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

/// The build that this host prepares.
namespace BuildJob {

/// The sample layout, finished, with more that the platform decides and a part may override.
class Layout : public Zantrel::Sample::ParameterLayout {
public:
    Layout();
};

/// The property of a part instance that holds the identifier of its unique part.
inline constexpr wchar_t const* UniquePart = L"PowderBed.UniquePart";

/// What the host keeps while a platform is prepared: twelve instances of three unique parts, three of which
/// are to be built in another way than the rest, all of it mixed with the host's own bookkeeping.
KelAM::DatabaseExternalProperties MakeDatabase();

/// What an operator decides last, in the ticket itself: gives the overrides of a fourth instance.
KelAM::ExternalProperties& ChangeLate(Zantrel::BuildTicket& ticket);

} // namespace BuildJob
