// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace Zantrel::Sax {

/// The limits of a read, in the order of ReadLimits.
enum class Limit { Bytes, Text, Elements, Depth, ListItems, Profiles, Report };

/// Why a read ended at that limit, with its number and its name.
std::wstring BeyondLimit(Limit limit, std::uint64_t number);

} // namespace Zantrel::Sax
