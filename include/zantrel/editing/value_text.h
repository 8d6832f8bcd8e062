// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <optional>
#include <string>
#include <string_view>

namespace Zantrel::Editing {

/// The value as an exact text, whatever the locale: a number in the fewest digits that read back as it, a
/// flag as "true" or "false", a text as it stands, of an attachment its file name. Empty where no value is.
ZANTREL_EDITING_EXPORT std::wstring TextOf(ParameterView const& cursor);

/// Sets the value from a text, all of which must be a value of the node's type, with white space at the ends
/// of a number or flag aside: a number as files have it, in decimal and with a point, whatever the locale; a
/// flag "true", "false", "True", "False", "1" or "0"; a text as it stands; for an attachment the path of a
/// file, whose bytes are read. Otherwise gives the finding and leaves the value. Creates the value of a
/// StandardOptions node.
///
/// Only what can't be kept is refused: ask Objections what the layout has against it.
ZANTREL_EDITING_EXPORT std::optional<Finding> SetText(Place const& place, std::wstring_view text);

} // namespace Zantrel::Editing
