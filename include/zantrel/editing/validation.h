// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// All that the layout has against the values, lists and profile lists of a database, or of a place and all
/// below it, in the order of a walk. Whether a parameter is shown plays no part.
///
/// - Limits are numbers of the classic locale; what is none limits nothing.
/// - A pattern must match the value as a whole; "^" and "$" hold at its ends only. It is ECMAScript's, with a
///   pair of surrogates as one character, without back references and looking around, and objects to nothing
///   where it is none: Lint names it. Matched in linear time. It counts for texts of every type, as the
///   greatest length does, which is in characters.
/// - A choice from profiles is one of a profile's name, or "Default" or "::DefaultProfile::". Which list
///   counts: see ChoicesOf. Where no list can be seen from the place every name will do.
/// - A value is unique among the entries of the innermost container around it, and not beyond that: in lists
///   in a list the inner items of one outer item. Default profiles take no part, since profiles begin as
///   their copies. Attachments are compared by their names. Each place of a value is told, with the first
///   other one.
/// - An empty text, or attachment without name and bytes, is held against nothing but being empty. That is a
///   note: for a choice that has something to choose from and for files, unless the layout allows it; for
///   other texts only where the layout's default isn't empty, or the value has to be unique.
/// - The number of entries is that of items, or of profiles without the default one.
///
/// Takes time in the number of the places, and for a place in a container, where values have to be unique, of
/// those that share the container. Throws std::bad_alloc.
ZANTREL_EDITING_EXPORT std::vector<Finding> Validate(ParameterDatabase const& database);
ZANTREL_EDITING_EXPORT std::vector<Finding> Validate(PlaceView const& top);

/// What would be held against a text as the value of a leaf, before it is set: first that the node or the
/// cursor is read-only, then that it is no value of the type, or else all that Validate would say of this
/// place. Nothing is changed; for an attachment the file is read. Empty: SetText takes it, and nothing speaks
/// against it. What is around the place is asked by LookOf. Takes time in the entries that share a container
/// where the value has to be unique, and in the nodes of the layout for a choice from profiles.
ZANTREL_EDITING_EXPORT std::vector<Finding> Objections(PlaceView const& place, std::wstring_view text);

/// Whether Validate notes an empty text, or attachment without name and bytes, as the value of this node: for
/// a host that checks elsewhere, as a page does. Where the node has an option that is empty it notes nothing.
ZANTREL_EDITING_EXPORT bool IsEmptyNoted(LayoutNode const& node) noexcept;

} // namespace Zantrel::Editing
