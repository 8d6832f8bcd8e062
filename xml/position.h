// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace Zantrel::Xml {

/// A place in a document, for a person with an editor: both counted from 1; a column is a character (code
/// point), not a byte.
struct Position {
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

} // namespace Zantrel::Xml
