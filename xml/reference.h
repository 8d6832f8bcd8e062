// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/fault.h"

namespace Zantrel::Xml {

/// Scans the reference whose '&' is at `at`, one to a character or to one of the five entities. Gives the
/// place behind it, or null and why it stopped.
char const* ScanReference(char const* at, char32_t& character, Stop& stop) noexcept;

} // namespace Zantrel::Xml
