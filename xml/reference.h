// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/fault.h"

namespace Zantrel::Xml {

/// Scans the reference whose '&' is at `at`, one to a character or to one of the five entities. Gives the
/// place behind it, or null and why it stopped. There are no other entities, as no document type is taken: a
/// reference is one character, and nothing it stands for is read as markup.
char const* ScanReference(char const* at, char32_t& character, Stop& stop) noexcept;

} // namespace Zantrel::Xml
