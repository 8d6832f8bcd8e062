// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/zantrel.h>

#include <nlohmann/json.hpp>

#include <string>

namespace Paramtool {

/// What a page shows. The databases and texts are borrowed.
struct PageSource {
    Zantrel::ParameterLayout const& layout;
    Zantrel::ParameterDatabase const* values = nullptr; ///< null: the layout's defaults
    std::wstring valuesFile;                            ///< as the page names it
    std::wstring language;                              ///< shown first; empty: the layout's own texts
};

/// All that the page's script needs, as data: the layout's nodes, by number; the values; the dictionary; what
/// Lint says. What a node doesn't tell is as a new LayoutNode has it (see nodes.js). Throws
/// std::runtime_error where groups stand too deep in each other to be shown, and for a copy of a layout.
nlohmann::json PageData(PageSource const& source);

} // namespace Paramtool
