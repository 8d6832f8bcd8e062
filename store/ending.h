// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/sequence_content.h"

#include <cstdint>

namespace Zantrel {

/// Ends all that a table's word stands for, at any depth.
/// Takes neither stack nor memory in the depth, so that no bag is too deep to end.
/// Whoever had the word must have let go of it.
void EndEntries(std::uintptr_t word) noexcept;
/// The same for the bags of a sequence; null is one without any.
/// The content itself is freed, too.
void EndSequence(SequenceContent* content) noexcept;

} // namespace Zantrel
