// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel {

/// Whether the rows of a table stand in the order of the enumeration that they explain, none left out: such a
/// table is indexed by the enumerator. `key` is the field with the enumerator, `last` the last one there is.
/// For static_assert, so that a row that is missing or moved doesn't compile.
template <class Row, std::size_t Count, class Enum>
constexpr bool InEnumOrder(Row const (&rows)[Count], Enum Row::*key, Enum last) {
    for (std::size_t index = 0; index < Count; ++index) {
        if (rows[index].*key != static_cast<Enum>(index)) {
            return false;
        }
    }
    return Count == static_cast<std::size_t>(last) + 1;
}

} // namespace Zantrel
