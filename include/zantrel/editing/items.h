// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/editing/place.h>
#include <zantrel/editing/profiles.h>

#include <cstddef>

namespace Zantrel::Editing {

/// \file
/// `list` is a list as a whole, and goes on naming it. All honour what LookOf says of editing it, the
/// layout's permissions and limits and the list's flags, and give a finding instead of doing what these don't
/// allow to a user. On std::bad_alloc, which passes through, the database is as it was.

/// Appends a copy of the list's template. Cursors on other items stay good.
ZANTREL_EDITING_EXPORT EntryChange AddItem(Place const& list);
/// Takes the item at `from` to where it then stands at `to`. A cursor on an item then means the item at that
/// place of the list. Nothing is copied.
ZANTREL_EDITING_EXPORT EntryChange MoveItem(Place const& list, std::size_t from, std::size_t to);
/// Ends the item at `index`, unless that is read-only. A cursor on an item then means the item at that place
/// of the list; those on the last one and in what has ended go stale. Nothing is copied.
ZANTREL_EDITING_EXPORT EntryChange RemoveItem(Place const& list, std::size_t index);

} // namespace Zantrel::Editing
