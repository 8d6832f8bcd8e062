// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_view.h>

#include <string>

namespace Zantrel::Editing {

/// The value as a text that tells it from others: as TextOf, but of an attachment name, size and a checksum.
std::wstring ShownText(ParameterView const& cursor);

/// Whether both have the same value; of different types, as texts. NaN is the same as NaN, and no value the
/// same as an empty text, as files have it.
bool IsSameValue(ParameterView const& first, ParameterView const& second);

} // namespace Zantrel::Editing
