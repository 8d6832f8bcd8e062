// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <string>

namespace Zantrel::Editing {

/// The finding of a kind at a place: its severity and its sentence come from one table of all kinds.
Finding MakeFinding(FindingKind kind, PlaceView const& place, std::wstring value = {},
                    std::wstring limit = {});

/// A text in quotes, cut where it is long.
std::wstring Quoted(std::wstring_view text);

} // namespace Zantrel::Editing
