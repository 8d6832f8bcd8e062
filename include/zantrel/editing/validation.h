// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// All that the layout has against the values, entries and profiles of a database, or of a place and all
/// below it, in the order of a walk. Whether a parameter is shown plays no part. Uniqueness is held within
/// the list or profile list that the place stands in. Takes time in the number of the places.
ZANTREL_EDITING_EXPORT std::vector<Finding> Validate(ParameterDatabase const& database);
ZANTREL_EDITING_EXPORT std::vector<Finding> Validate(PlaceView const& top);

/// What would be held against a text as the value of a leaf, before it is set: that it is no value of the
/// type, and all that Validate would say of it. Nothing is changed. Empty: SetText will take it, and nothing
/// speaks against it.
ZANTREL_EDITING_EXPORT std::vector<Finding> Objections(PlaceView const& place, std::wstring_view text);

} // namespace Zantrel::Editing
