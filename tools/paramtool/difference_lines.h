// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "output.h"

#include <zantrel/editing/differences.h>
#include <zantrel/editing/layout_differences.h>

#include <string>
#include <vector>

namespace Paramtool {

struct DifferenceLine {
    std::wstring text;
    bool isAdded; ///< what the second has; otherwise what the first had
};

/// "- path = before" and "+ path = after", with units and the words for flags.
std::vector<DifferenceLine> LinesOf(Zantrel::Editing::Difference const& difference);
/// {"kind", "path", "what", "before", "after"}
Json JsonOf(Zantrel::Editing::Difference const& difference);

// The same of layouts.
DifferenceLine LineOf(Zantrel::Editing::LayoutDifference const& difference);
Json JsonOf(Zantrel::Editing::LayoutDifference const& difference);

} // namespace Paramtool
