// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/editing/export.h>

#include <string>
#include <vector>

namespace Zantrel::Editing {

/// That what stood under one path of the layout stands under another one now, with all below it that isn't
/// renamed itself.
struct Renaming {
    /// Names from below "ProfileEditor", joined by "/", without entries: "Materials/Power".
    std::wstring from;
    std::wstring to;
};

/// What became of one place.
struct MigrationStep {
    enum class Kind {
        Taken,     ///< as it was
        Converted, ///< to another type, or into or out of a list; `before` and `after` say it
        Renamed,   ///< taken under another path, which `newPath` is
        Dropped,   ///< the new layout has no such place
        New,       ///< the old layout had no such place: the default stands there, and below it, too,
                   ///< but for what other steps name
        Refused    ///< no value of the new type: the default stands there
    };
    Kind kind = Kind::Taken;
    std::wstring path;    ///< in the old database; of what is new in the new one
    std::wstring newPath; ///< in the new database; empty for what was dropped
    std::wstring what;    ///< of a flag: "ReadOnly", "Hidden", ...; otherwise empty
    std::wstring before;  ///< as Difference has it
    std::wstring after;
    std::wstring reason; ///< English, for a person; empty for what was taken
};

/// What Migrate gives.
struct Migration {
    ParameterDatabase database; ///< on the new layout
    /// One for each value, item, profile and set flag, in the order of the new layout, with what was dropped
    /// behind what it stood behind.
    std::vector<MigrationStep> steps;
};

/// The values of a database on a changed layout: a new database on `to` with all that finds a place there,
/// items and profiles in their order, default profiles, templates of lists, and flags that are set. Nothing
/// is held against limits or options: Validate says what of it the new layout doesn't allow.
///
/// A value of another type is taken where it is the same value there: numbers where they are exact, a flag as
/// 1 or 0, anything as its text, and a text that is wholly a number or a flag. A file's bytes become nothing
/// else. A single value that is a list now becomes its first item, and in a profile list its default profile;
/// of a list that is a single value now the first item counts, or the default profile. Items don't become
/// profiles, nor profiles items. A renaming leads to another place of the same entry: what would leave its
/// list is dropped.
///
/// `to` must outlive the result; `from` stays as it is. Throws std::invalid_argument for a renaming whose
/// path isn't in its layout, or that contradicts another one. Linear in the places.
ZANTREL_EDITING_EXPORT Migration Migrate(ParameterDatabase const& from, ParameterLayout const& to,
                                         std::vector<Renaming> const& renamings = {});

} // namespace Zantrel::Editing
