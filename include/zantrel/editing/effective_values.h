// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/build_ticket/build_ticket.h>
#include <zantrel/editing/export.h>
#include <zantrel/layout/parameter_layout.h>

#include <string>
#include <vector>

namespace Zantrel::Editing {

/// What counts for a part under one property name.
struct EffectiveValue {
    enum class Source {
        LayoutDefault, ///< of the node that declares the property
        TicketDefault, ///< a property of the ticket's defaults
        PartOverride   ///< a property of the part instance's overrides
    };
    std::wstring property;
    std::wstring text; ///< the value, exact; of anything but a number, flag or text its type's name
    Source source = Source::LayoutDefault;
    IPersistentProperty const* value = nullptr; ///< borrowed from the ticket; null for a layout's default
    LayoutNode const* node = nullptr;           ///< that declares the property; null where none does
};

/// What counts for the part instance `part`, a GUID in any spelling, property by property in the order of
/// the layout (platform options, part options, part configurator; of several nodes with one property the
/// first), then what no node declares, by name. With an empty or unknown `part` what counts for every part
/// without overrides. Of several properties of one name the first counts; where that one is marked deleted,
/// the next source does. What stands below a node with a property name, or in a list, lies within that
/// property. The result borrows from ticket and layout.
ZANTREL_EDITING_EXPORT std::vector<EffectiveValue>
EffectiveValues(BuildTicket const& ticket, std::wstring const& part, ParameterLayout const& layout);

} // namespace Zantrel::Editing
