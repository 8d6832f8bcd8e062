// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace Zantrel {

/// The deepest level below the root at which layouts from files have nodes, so that every walk over one fits
/// the stack, that of a database on it too.
inline constexpr std::size_t MaxNodeLevel = 256;

} // namespace Zantrel
