// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_database.h>
#include <zantrel/database/parameter_node.h>
#include <zantrel/database/parameter_view.h>
#include <zantrel/database/walk.h>
#include <zantrel/editing/export.h>
#include <zantrel/layout/layout_node.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zantrel::Editing {

/// A cursor that knows its way: the steps that lead to it from the profile editor, with the items and
/// profiles passed on it. A cursor alone can't tell in which profile it stands; what counts for a parameter
/// (conditions, choices, uniqueness) depends on that.
///
/// Place, of ParameterNodes, is what operations take that change a database; PlaceView, of ParameterViews,
/// what those take that only read. The one converts to the other.
///
/// There are these two; what isn't defined here is in the library.
///
/// A value. Borrows the bags and the layout, goes stale as its cursors do, and belongs to their thread.
template <class Cursor> class BasicPlace {
public:
    using Database =
        std::conditional_t<std::is_same_v<Cursor, ParameterNode>, ParameterDatabase, ParameterDatabase const>;

    /// The profile editor of `database`, in which everything stands. Without a layout it is no place: see
    /// IsValid.
    ZANTREL_EDITING_EXPORT explicit BasicPlace(Database& database);
    /// The same place with cursors that only read.
    template <class Other,
              std::enable_if_t<std::is_same_v<Cursor, ParameterView> && std::is_same_v<Other, ParameterNode>,
                               int> = 0>
    BasicPlace(BasicPlace<Other> const& place) : m_steps(place.m_steps.begin(), place.m_steps.end()) {}

    /// Whether the cursor has content. Asking a place that isn't valid for what stands below it gives further
    /// places that aren't.
    ZANTREL_EDITING_EXPORT bool IsValid() const;
    /// The cursor on this place. Good as long as this place.
    Cursor const& GetCursor() const noexcept { return m_steps.back().cursor; }
    /// The node of the layout; entries of a container have that of the container. Null only without a layout.
    LayoutNode const* GetLayoutNode() const noexcept { return m_steps.back().layout; }
    PlaceKind GetKind() const noexcept { return m_steps.back().kind; }
    /// Whether this is an item, a profile or a default profile.
    ZANTREL_EDITING_EXPORT bool IsEntry() const noexcept;
    /// Whether a value stands here and not further places.
    ZANTREL_EDITING_EXPORT bool IsLeaf() const noexcept;
    /// How many steps below the profile editor, which has 0.
    std::size_t GetDepth() const noexcept { return m_steps.size() - 1; }
    /// An item's position in its list, from 0; otherwise 0.
    std::size_t GetIndex() const noexcept { return m_steps.back().index; }
    /// The name of the node, or of a profile; empty for an item and for a default profile. Good as long as
    /// this place and the layout.
    ZANTREL_EDITING_EXPORT std::wstring_view GetName() const noexcept;
    /// The steps as ContentList has them: "Materials_Profile[Steel]_Power". Empty for the profile editor.
    ZANTREL_EDITING_EXPORT std::wstring GetPath() const;

    /// The child of that name, from a group or an entry of groups. Throws ParameterMisuse, "invalid query, no
    /// such node", when the layout has none.
    ZANTREL_EDITING_EXPORT BasicPlace Get(wchar_t const* name) const;
    BasicPlace Get(std::wstring const& name) const { return Get(name.c_str()); }
    /// The item of a list. Throws as ParameterNode::GetListNode.
    ZANTREL_EDITING_EXPORT BasicPlace GetItem(std::size_t index) const;
    /// The profile of a profile list; not valid when there is none. Throws as ParameterNode::GetProfile.
    ZANTREL_EDITING_EXPORT BasicPlace GetProfile(std::wstring const& name) const;
    /// The default profile of a profile list. Throws as ParameterNode::GetDefault.
    ZANTREL_EDITING_EXPORT BasicPlace GetDefaultProfile() const;
    /// The place `depth` steps below the profile editor that this one lies in, or is: GetDepth() gives this.
    /// `depth` isn't greater than that.
    ZANTREL_EDITING_EXPORT BasicPlace GetOuter(std::size_t depth) const;

    /// The place of that path, in the form that GetPath gives, of a leaf or anything else; nothing when there
    /// is none. Of a name that a profile list has twice the first. Takes time in the number of the children
    /// that stand on the way.
    ZANTREL_EDITING_EXPORT static std::optional<BasicPlace> Find(Database& database, std::wstring_view path);

private:
    template <class> friend class BasicPlace;
    template <class> friend class PlaceWalk;
    friend class EntryPlace;
    friend class Scope;
    friend class StepLook;

    struct Step {
        Step(Cursor const& at, LayoutNode const* ofLayout, PlaceKind ofKind)
            : cursor(at), layout(ofLayout), kind(ofKind) {}
        template <class OtherStep>
        explicit Step(OtherStep const& step)
            : cursor(step.cursor), layout(step.layout), kind(step.kind), index(step.index),
              profile(step.profile) {}

        Cursor cursor;
        LayoutNode const* layout;
        PlaceKind kind;
        std::size_t index = 0; ///< of an item
        std::wstring profile;  ///< the name of a profile
    };

    BasicPlace() = default; ///< for a walk, which fills it
    BasicPlace With(Cursor const& cursor, LayoutNode const* layout, PlaceKind kind) const;
    struct Crossing;
    bool FindBelow(std::wstring_view path);
    std::optional<std::wstring_view> NextStep(Crossing& crossing);
    std::optional<std::wstring_view> NextChild(Crossing& crossing);
    std::optional<std::wstring_view> NextEntry(Crossing& crossing);

    std::vector<Step>
        m_steps; ///< from the profile editor to here; never empty but before a walk's first step
};

using Place = BasicPlace<ParameterNode>;
using PlaceView = BasicPlace<ParameterView>;

/// A walk over all places of a database, or over one and all below it, in the order of the layout:
///
///     for (PlaceWalk walk(database); walk.Next();) {
///         Look const look = LookOf(walk.GetPlace());
///     }
///
/// Each profile counts, also a second one of a name. Places without content don't come. The rules are those
/// of Walk.
template <class Cursor> class PlaceWalk {
public:
    explicit PlaceWalk(typename BasicPlace<Cursor>::Database& database)
        : PlaceWalk(BasicPlace<Cursor>(database)) {}
    explicit PlaceWalk(BasicPlace<Cursor> top)
        : m_place(std::move(top)), m_top(m_place.GetDepth()), m_walk(m_place.GetCursor()) {}

    /// Goes to the next place, at the first call to the top itself. False when there is none.
    bool Next() {
        while (m_walk.Next()) {
            if (!m_walk.Node().IsValid()) {
                m_walk.SkipContent();
                continue;
            }
            if (m_walk.Depth() != 0) { // the top stands already
                m_place.m_steps.erase(m_place.m_steps.begin() +
                                          static_cast<std::ptrdiff_t>(m_top + m_walk.Depth()),
                                      m_place.m_steps.end());
                auto& step = m_place.m_steps.emplace_back(m_walk.Node(), &m_walk.Layout(), m_walk.Kind());
                if (m_walk.Kind() == PlaceKind::Item) {
                    step.index = m_walk.Index();
                } else if (m_walk.Kind() == PlaceKind::Profile) {
                    step.profile = m_walk.Name();
                }
            }
            return true;
        }
        return false;
    }
    /// Lets the next step pass over all that stands below this place.
    void SkipContent() noexcept { m_walk.SkipContent(); }

    /// Good until Next: copy it to keep it.
    BasicPlace<Cursor> const& GetPlace() const noexcept { return m_place; }
    /// GetPlace().GetPath(), put together only as far as it has changed. Good until Next.
    std::wstring_view GetPathBelowTop() const { return m_walk.Path(); }

private:
    BasicPlace<Cursor> m_place;
    std::size_t m_top; ///< its depth
    Walk<Cursor> m_walk;
};

PlaceWalk(ParameterDatabase&)->PlaceWalk<ParameterNode>;
PlaceWalk(ParameterDatabase const&)->PlaceWalk<ParameterView>;

} // namespace Zantrel::Editing
