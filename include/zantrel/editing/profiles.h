// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/editing/export.h>
#include <zantrel/editing/finding.h>
#include <zantrel/editing/place.h>

#include <optional>
#include <string>
#include <vector>

namespace Zantrel::Editing {

/// What came of an operation on the entries of a container. Where there is a finding nothing was changed.
struct EntryChange {
    std::optional<Finding> finding;
    std::optional<Place> entry; ///< the entry added, moved or renamed
    /// Choices that had the profile's name and mean this list: taken along by a renaming (a note each, whose
    /// `value` is the old name), left without a profile by a removal (what Validate says of them).
    std::vector<Finding> references;

    explicit operator bool() const noexcept { return !finding; }
};

/// \file
/// `list` is a profile list as a whole, and goes on naming it. All honour what LookOf says of editing it, the
/// layout's permissions and limits and the flags of list and profile, and give a finding instead of doing
/// what these don't allow to a user. Cursors on other profiles stay good. On std::bad_alloc, which passes
/// through, the database is as it was.
///
/// A new name is refused when it is empty, in use, one under which the library keeps something else ("Value",
/// "ReadOnly", ...), "Default" or "::Default::", by which choices and paths mean the default profile, or has
/// characters that no file can carry. Of several profiles of one name the first is meant, as by look-ups;
/// once it is renamed or gone, the next one is found by the name.
///
/// A profile made here can be deleted and renamed and isn't read-only, hidden or the user's default, whatever
/// it is a copy of. One that neither these functions nor a file or host has said it of can't be deleted, as
/// GetCanBeDeleted tells.

/// Adds a profile with the values of the default profile.
ZANTREL_EDITING_EXPORT EntryChange AddProfile(Place const& list, std::wstring const& name);
/// Adds a profile with the values of another one of the list.
ZANTREL_EDITING_EXPORT EntryChange DuplicateProfile(Place const& list, std::wstring const& source,
                                                    std::wstring const& name);
/// Gives a profile another name, unless its name is read-only. Choices that mean this profile take the new
/// name, in templates of lists too, which aren't told; all of its flags and values stay. Cursors on the
/// profile and below go stale. Takes time in the size of the profile, and in the places among which choices
/// from this list stand.
ZANTREL_EDITING_EXPORT EntryChange RenameProfile(Place const& list, std::wstring const& name,
                                                 std::wstring const& newName);
/// Ends a profile that can be deleted. Cursors on it go stale. `references` tells which choices name what is
/// no longer there: none, if the name is found again. Takes time in the places among which choices from this
/// list stand.
ZANTREL_EDITING_EXPORT EntryChange RemoveProfile(Place const& list, std::wstring const& name);

} // namespace Zantrel::Editing
