// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/editing/export.h>
#include <zantrel/editing/place.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel::Editing {

/// Why a place is not visible or not editable. It owns its texts and borrows the layout.
struct LookReason {
    enum class Kind {
        Layout,   ///< the node isn't visible, or is read-only
        Flag,     ///< the cursor is hidden, or read-only
        Condition ///< the source of a condition has none of the values that would do
    };
    Kind kind = Kind::Layout;
    bool isAboutVisibility = true; ///< otherwise about editing
    /// How deep the place stands that has the flag or the condition: the place's own depth, or less for one
    /// around it, which its GetOuter gives.
    std::size_t depth = 0;
    LayoutNode const* node = nullptr;   ///< of that place
    LayoutNode const* source = nullptr; ///< of a condition
    std::vector<std::wstring> wanted;   ///< of a condition: the values, one of which would do
    std::wstring actual;                ///< of a condition: what the source is, as its node formats it
};

/// How a place is to be shown.
struct Look {
    bool isVisible = true;
    bool isEditable = true;          ///< a place that isn't visible may still be
    std::vector<LookReason> reasons; ///< why not, from the outside inwards; empty where both are true
};

/// What a reason says, when `place` is the one whose look has it: English, for a person. Put together when it
/// is asked for, since a walk meets many more reasons than a user.
ZANTREL_EDITING_EXPORT std::wstring SentenceOf(LookReason const& reason, PlaceView const& place);

/// Whether a place is visible and editable: by the layout's flags, the cursor's, the conditions, and what is
/// around it, which must all be visible for a place to be visible, and editable for it to be editable.
///
/// Conditions on one and the same source are alternatives: one of them must hold. Different sources must all
/// have one that holds. A source's value is compared as the text that its node formats, in the classic
/// locale; a flag as "True" or "False". The source that counts stands in the same item or profile, else in
/// the next one outward, else in the layout as a whole; one in a profile list that the place isn't in counts
/// by its default profile. A condition whose source is missing, a group, a container or without a value
/// holds: Lint names it.
///
/// Takes time in the depth of the place and the number of conditions on it and around it; for many places
/// take a LookWalk.
ZANTREL_EDITING_EXPORT Look LookOf(PlaceView const& place);

/// A walk over all places of a database, or over one and all below it, with the look of each: what is around
/// a place is looked at once for all that stands in it.
///
///     for (LookWalk walk(database); walk.Next();) {
///         if (!walk.GetLook().isVisible) {
///             walk.SkipContent();
///         }
///     }
///
/// Gives the places of a PlaceWalk, and its rules are those. What was written while it walks counts for the
/// places that come afterwards, but not for what is around them.
class ZANTREL_EDITING_EXPORT LookWalk {
public:
    explicit LookWalk(ParameterDatabase const& database);
    explicit LookWalk(PlaceView top);

    /// Goes to the next place, at the first call to the top itself. False when there is none. Throws
    /// std::bad_alloc; afterwards only the end of the walk may be.
    bool Next();
    /// Lets the next step pass over all that stands below this place.
    void SkipContent() noexcept { m_walk.SkipContent(); }

    /// Good until Next: copy it to keep it.
    PlaceView const& GetPlace() const noexcept { return m_walk.GetPlace(); }
    /// What LookOf gives for the place. Good until Next.
    Look const& GetLook() const noexcept { return m_look; }
    /// The path from below the top, as PlaceWalk has it. Good until Next.
    std::wstring_view GetPathBelowTop() const { return m_walk.GetPathBelowTop(); }

private:
    /// The look of a place on the way: its reasons are the first ones of m_look.
    struct Outer {
        std::size_t reasons = 0;
        bool isVisible = true, isEditable = true;
    };
    PlaceWalk<ParameterView> m_walk;
    Look m_look;
    std::vector<Outer> m_outer; ///< by depth
};

} // namespace Zantrel::Editing
