// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xml/fault.h"
#include "xml/input_buffer.h"

#include <string_view>

namespace Zantrel::Xml {

/// Scans the XML declaration at `at`, of which "<?xml" has been found. `encoding` becomes a view of the name
/// it gives, and is empty if it gives none. Gives the place behind it, or null and why it stopped.
char const* ScanDeclaration(char const* at, std::string_view& encoding, Stop& stop) noexcept;

/// Whether a document in `actual` can say that it is in the encoding of this name; if not, why.
bool CheckEncoding(std::string_view name, Encoding actual, Stop& stop) noexcept;

} // namespace Zantrel::Xml
