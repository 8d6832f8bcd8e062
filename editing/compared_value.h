// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_view.h>

#include <optional>
#include <string>

/// What is compared of a value, and how it is told.
namespace Zantrel::Editing {

/// The value as its node formats it, in the classic locale, by which conditions are compared: a number with
/// the node's precision, a flag as "True" or "False", of an attachment its file name. Nothing where no value
/// stands, as on a group or container.
std::optional<std::wstring> FormattedText(ParameterView const& cursor);

/// The value as a text that tells it from others: as TextOf, but of an attachment name, size and a checksum.
std::wstring ShownText(ParameterView const& cursor);

/// Whether both have the same value; of different types, as texts. NaN is the same as NaN, and no value the
/// same as an empty text, as files have it.
bool IsSameValue(ParameterView const& first, ParameterView const& second);

} // namespace Zantrel::Editing
