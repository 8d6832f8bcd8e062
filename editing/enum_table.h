// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel::Editing {

/// Whether a table has one row for each value of an enumeration, in its order, up to the last one: then the
/// value is the index. For static_assert.
template <class Row, std::size_t Count, class Enum>
constexpr bool HasRowForEach(Row const (&table)[Count], Enum Row::*kind, Enum last) {
    for (std::size_t i = 0; i < Count; ++i) {
        if (static_cast<std::size_t>(table[i].*kind) != i) {
            return false;
        }
    }
    return Count == static_cast<std::size_t>(last) + 1;
}

} // namespace Zantrel::Editing
