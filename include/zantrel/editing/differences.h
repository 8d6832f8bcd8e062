// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/editing/export.h>

#include <string>
#include <vector>

namespace Zantrel::Editing {

/// One thing in which two databases differ.
struct Difference {
    enum class Kind {
        Value,   ///< of a leaf
        Flag,    ///< `what` names it
        Added,   ///< only the second has the place, with all below it
        Removed, ///< only the first has it
    };
    Kind kind = Kind::Value;
    std::wstring path;   ///< as BasicPlace::GetPath gives it
    std::wstring what;   ///< of a flag: "ReadOnly", "Hidden", ...; otherwise empty
    std::wstring before; ///< as TextOf gives it; of an attachment name, size and a checksum
    std::wstring after;
    ParameterView first;  ///< not valid where only the second has the place
    ParameterView second; ///< not valid where only the first has it
};

/// In what the second database differs from the first, in the order of the second's layout, with what only
/// the first has behind what it stood behind. Places are matched by name, items by their index, profiles by
/// their name; a further profile of one name by its turn. Templates of lists are compared, too, under the
/// path of a default profile.
///
/// The layouts may differ: a node that only one has counts as a place that only one has, and so does one that
/// is a list or profile list in only one. Values of different types are the same where their texts are. A
/// flag that is false equals one that was never set, no value an empty text, NaN itself. Linear in the
/// places; the cursors go stale as cursors do.
ZANTREL_EDITING_EXPORT std::vector<Difference> Differences(ParameterDatabase const& first,
                                                           ParameterDatabase const& second);

} // namespace Zantrel::Editing
