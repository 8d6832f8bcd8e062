// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace Zantrel::Editing {

/// The finding of a kind at a place: its severity and its sentence come from one table of all kinds. The
/// sentence has the start of what is long, or in the limit's place all of `shownLimit`.
Finding MakeFinding(FindingKind kind, PlaceView const& place, std::wstring value = {},
                    std::wstring limit = {}, std::wstring_view shownLimit = {});

/// A text, or its first `longest` characters and "..." where it has more.
std::wstring Cut(std::wstring_view text, std::size_t longest);

/// A text in quotes, cut where it is long.
std::wstring Quoted(std::wstring_view text);

} // namespace Zantrel::Editing
