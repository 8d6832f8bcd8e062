// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace Paramtool {

/// ", did you mean "show"?" with the known word that is nearest to a mistyped one; empty where none is near.
/// Takes time in the lengths of those that are about as long.
std::wstring Suggestion(std::wstring const& word, std::vector<std::wstring> const& known);

} // namespace Paramtool
