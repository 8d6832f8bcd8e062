// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "page_data.h"

#include <string>

namespace Paramtool {

/// The page with the data of PageData, as a document in UTF-8: one file that needs nothing beside it and
/// fetches nothing. A policy in it lets a browser run its one script and use its one style sheet, by their
/// checksums, and nothing else. What the layout and the values say stands in it as data only, in which
/// nothing ends the element.
std::string PageOf(nlohmann::json const& data);

} // namespace Paramtool
