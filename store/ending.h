// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "store/sequence_content.h"

#include <cstdint>

namespace Zantrel {

/// Ends all that a table's word stands for, at any depth.
void EndEntries(std::uintptr_t word) noexcept;
/// The same for the bags of a sequence; null is one without any.
void EndSequence(SequenceContent* content) noexcept;

} // namespace Zantrel
