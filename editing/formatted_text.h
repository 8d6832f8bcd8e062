// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_view.h>

#include <optional>
#include <string>

namespace Zantrel::Editing {

/// The value as its node formats it, in the classic locale, by which conditions are compared: a number with
/// the node's precision, a flag as "True" or "False", of an attachment its file name. Nothing where no value
/// stands, as on a group or container.
std::optional<std::wstring> FormattedText(ParameterView const& cursor);

} // namespace Zantrel::Editing
