// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <cstddef>
#include <iosfwd>

namespace RoundTrip {

/// Prints what stands under the cursor as an indented tree in UTF-8, one line for each value, entry and
/// group.
void Show(Zantrel::ParameterView const& top, std::ostream& out);

/// How much two databases were found to have in common.
struct Equalities {
    std::size_t values = 0;
    std::size_t entries = 0; ///< profiles and list items
};

/// Compares every value, flag, profile and list item. Throws std::runtime_error that names, in UTF-8, the
/// first place where the two differ.
Equalities Compare(Zantrel::ParameterDatabase const& first, Zantrel::ParameterDatabase const& second);

} // namespace RoundTrip
