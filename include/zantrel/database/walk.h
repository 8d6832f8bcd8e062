// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/database/parameter_node.h>
#include <zantrel/database/parameter_view.h>
#include <zantrel/export.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <type_traits>

namespace Zantrel {

class WalkState;

/// What a walk has come to.
enum class PlaceKind {
    Group,          ///< a node with children
    Leaf,           ///< a node without
    List,           ///< a list as a whole
    Item,           ///< one item of a list
    ProfileList,    ///< a profile list or a list of categories as a whole
    DefaultProfile, ///< its default profile
    Profile         ///< one of its profiles
};

/// What a walk gives for several profiles of one name.
enum class SameNames {
    Each,       ///< each with its own content
    FirstAgain, ///< each with the content that a look-up by name finds, as files are written
    FirstOnly   ///< the name once, with that content, as ContentList has it
};

/// What a walk makes of a node that is a list and a profile list in one. Formatting makes a profile list.
enum class TwofoldContainers { AreProfileLists, AreLists };

/// What a walk says of the place where it stands, whatever cursor it gives. See Walk.
class ZANTREL_EXPORT AnyWalk {
public:
    AnyWalk(AnyWalk const&) = delete;
    AnyWalk& operator=(AnyWalk const&) = delete;

    /// Goes to the next place, at the first call to the top itself. False when there is none; then nothing
    /// but Next may be called. Throws std::bad_alloc.
    bool Next();
    /// Lets the next step pass over all that stands below this place.
    void SkipContent() noexcept { m_place.goesIn = false; }

    PlaceKind Kind() const noexcept { return m_place.kind; }
    /// The node of the layout; entries of a container have that of the container. Known also where the cursor
    /// stands on nothing.
    LayoutNode const& Layout() const noexcept { return *m_place.layout; }
    /// Whether a value stands here and not further places: a Leaf, or an entry of a container of leaves.
    bool IsLeaf() const noexcept { return m_place.isLeaf; }
    /// How many steps below the top, which has 0.
    std::size_t Depth() const noexcept { return m_place.depth; }
    /// From 0: a child's position in the layout, an item's in its list, a profile's among those given.
    std::size_t Index() const noexcept { return m_place.index; }
    /// The last step's name: the layout's for a child and for the top, a profile's own; empty for items and
    /// the default profile. Good as long as the layout's node or the profile.
    std::wstring_view Name() const noexcept { return m_place.name; }
    /// The steps from below the top as ContentList and ParameterNode::Query have them; empty for the top. Put
    /// together when it is asked for, and only as far as it has changed. Good until Next.
    std::wstring_view Path() const;

protected:
    AnyWalk(ParameterView const& top, SameNames sameNames, TwofoldContainers twofold);
    ~AnyWalk();

    /// Whether an earlier profile of the same list has the name of this one. For a Profile only.
    bool IsRepeated() const noexcept { return m_place.isRepeated; }

    /// Children of a group of which some are still to come.
    struct Row {
        LayoutNode const* layout = nullptr;  ///< the group; null: there is no such row
        PersistentProperties* bag = nullptr; ///< the group's
        std::size_t next = 0;  ///< the position in the layout of the child that Next would come to
        std::size_t depth = 0; ///< of the children
        PersistentProperties const* after = nullptr; ///< of the profile that the walk comes to next, if known
    };
    /// The row that Next would go on in; for who goes through many bags that are known by their shape, and
    /// needs no place for each of the children.
    Row PeekRow();
    /// Passes over what stands in that row before a position, which may be its end. Afterwards Next is
    /// called, or one of these two; nothing else.
    void PassTo(std::size_t position) noexcept;

    ParameterView const& AsView() const noexcept { return m_place.at; }
    ParameterNode const& AsNode() const noexcept { return m_place.at.m_node; }

private:
    friend class WalkState;

    struct Place {
        ParameterView at; ///< before the first step: the top
        LayoutNode const* layout = nullptr;
        std::wstring_view name{};
        std::size_t depth = 0;
        std::size_t index = 0;
        PlaceKind kind = PlaceKind::Group;
        bool isLeaf = false;
        bool goesIn = false;     ///< to what stands below, at the next step
        bool isRepeated = false; ///< of a profile: an earlier one has its name
    };
    Place m_place;
    std::unique_ptr<WalkState> m_state;
};

/// A walk over a cursor and all that stands below it, in the order of the layout, without recursion:
///
///     for (Walk walk(database.GetProfileEditor()); walk.Next();) {
///         // walk.Node() is a cursor like any other
///     }
///
/// Below a group come its children, below a list its items, below a profile list the default profile and then
/// the profiles in order; below an entry what stands below a group. A list's template is not part of it. The
/// top comes first, at depth 0; a cursor without a layout node has no places. Who has to close what it opened
/// keeps a stack of it, and closes as long as the last one's depth is not below that of the place just come
/// to.
///
/// A place without content comes, too: then Node() is not valid, a container has no entries, and below any
/// other place its children come once more, with cursors on nothing.
///
/// The Cursor is a ParameterNode or, on what is const, a ParameterView: the argument decides. Nothing is
/// added to any bag by a walk. While it walks values may be written, and the place where it stands may be
/// changed in any way before the next step; above that nothing may be added or removed. Borrows the bags and
/// the layout, and belongs to their thread.
template <class Cursor> class Walk final : public AnyWalk {
    static_assert(std::is_same_v<Cursor, ParameterNode> || std::is_same_v<Cursor, ParameterView>,
                  "a walk is made from a ParameterNode or a ParameterView");

public:
    explicit Walk(Cursor const& top, SameNames sameNames = SameNames::Each,
                  TwofoldContainers twofold = TwofoldContainers::AreProfileLists)
        : AnyWalk(top, sameNames, twofold) {}

    /// The cursor on the place, as Get, GetListNode, GetProfile or GetDefault give it. Good until Next: copy
    /// it to keep it.
    Cursor const& Node() const noexcept {
        if constexpr (std::is_same_v<Cursor, ParameterView>) {
            return AsView();
        } else {
            return AsNode();
        }
    }
};

} // namespace Zantrel
