// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "handles.h"

#include <zantrel/editing/place.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace ZantrelPython {

/// A place of a database, as Python holds it: keeps its database alive, and the nodes around it. There is one
/// node for a place, so that all who hold it see the same.
///
/// Cursors of the library go stale without notice. So a node knows each node below it that somebody holds:
/// when an entry is removed, moved or renamed through its container, the entry's node is told, and goes on to
/// stand for the same entry or raises StaleNode from then on. The cursor itself is only kept until the
/// database counts the next such change, and then found anew from the node above.
class Node : public std::enable_shared_from_this<Node> {
public:
    virtual ~Node();
    Node(Node const&) = delete;
    Node& operator=(Node const&) = delete;

    /// The profile editor.
    static std::shared_ptr<Node> Root(std::shared_ptr<DatabaseHandle> const& database);
    /// The node of a place that the library has found.
    static std::shared_ptr<Node> Of(std::shared_ptr<DatabaseHandle> const& database,
                                    Zantrel::Editing::Place const& place);

    std::shared_ptr<Node> Child(Zantrel::LayoutNode const& layout);
    std::shared_ptr<Node> Item(std::size_t index);
    std::shared_ptr<Node> Profile(std::wstring const& name);
    std::shared_ptr<Node> DefaultEntry();

    /// Raises StaleNode when what this stood for has gone.
    Zantrel::ParameterNode const& Cursor();
    Zantrel::Editing::Place Place();
    std::wstring Path() { return Place().GetPath(); }

    std::shared_ptr<DatabaseHandle> const& Database() const { return m_database; }
    std::shared_ptr<Node> const& Parent() const { return m_parent; }
    Zantrel::LayoutNode const& Layout() const { return *m_step.layout; }
    Zantrel::PlaceKind Kind() const { return m_step.kind; }
    std::size_t Index() const { return m_step.index; }
    /// Whether its own entry was removed.
    bool IsGone() const { return m_isGone; }
    /// Whether its own entry or one that it stands in was.
    bool HasGone() const;
    /// Of the layout's node or the profile; of an item its index.
    std::wstring Name() const;

    // What Python makes of its containers is told here, before the next Cursor.
    void ItemRemoved(std::size_t index);
    void ItemMoved(std::size_t from, std::size_t to);
    void ProfileRemoved(std::wstring const& name);
    void ProfileRenamed(std::wstring const& name, std::wstring newName);
    /// All items and profiles below have been replaced.
    void EntriesReplaced();

protected:
    Node() = default;

private:
    struct Step {
        Zantrel::PlaceKind kind = Zantrel::PlaceKind::Group;
        Zantrel::LayoutNode const* layout = nullptr; ///< of an entry that of its container
        std::size_t index = 0;                       ///< of an item
        std::wstring profile;
        bool operator<(Step const& other) const;
    };
    /// Nodes by their own steps, and a step among them.
    struct ByStep {
        using is_transparent = void;
        bool operator()(Node const* one, Node const* other) const { return one->m_step < other->m_step; }
        bool operator()(Node const* node, Step const& step) const { return node->m_step < step; }
        bool operator()(Step const& step, Node const* node) const { return step < node->m_step; }
    };
    using Nodes = std::set<Node*, ByStep>;

    static std::shared_ptr<Node> Make(std::shared_ptr<DatabaseHandle> database, std::shared_ptr<Node> parent,
                                      Step step);
    std::shared_ptr<Node> Below(Step step);
    /// Whether the cursor is that of the database as it is now.
    bool IsFresh() const;
    /// Of a node whose parent's cursor is fresh.
    Zantrel::ParameterNode Find();
    /// Gives the parent, which knows and keeps this no more, nor this it.
    std::shared_ptr<Node> LeaveParent();
    /// The node of that step, taken out; empty where nobody holds one.
    Nodes::node_type Take(Step const& step);
    /// Adds `by`, which is 1 or -1, to the indices from `first` to before `end`.
    void ShiftItems(std::size_t first, std::size_t end, std::size_t by);

    std::shared_ptr<DatabaseHandle> m_database;
    std::shared_ptr<Node> m_parent; ///< null for the profile editor
    Step m_step;
    Zantrel::ParameterNode m_cursor;
    std::uint64_t m_changes = 0; ///< the count that m_cursor was found at
    bool m_isGone = false;
    Nodes m_below; ///< each takes itself out at its end
};

/// The default profile's name in paths and in what dicts hold.
inline constexpr wchar_t const* DefaultProfileName = L"::Default::";

// Python's classes of nodes.
class GroupNode : public Node {};       ///< a group, or an entry that is one
class ListNode : public Node {};        ///< a list as a whole
class ProfilesNode : public Node {};    ///< a profile list as a whole
class ParameterNodeOf : public Node {}; ///< a value, or an entry that is one

/// The children of a group that can be found by name.
std::vector<Zantrel::LayoutNode const*> ChildrenOf(Zantrel::LayoutNode const& group);
/// What can be asked of a node by name; of a list its indices.
std::vector<std::wstring> NamesIn(Node& node);

/// Where a node stands, for a person: its path, and of the profile editor, whose path is empty, the layout's
/// name.
std::wstring WhereIs(Node& node);
/// Whether a profile list has a profile of this name; the default profile has none.
bool HasProfile(Node& profiles, std::wstring const& name);
/// The node of "Materials/Steel/Power" below `top`, or of a path as Node::Path gives it. KeyError when there
/// is none.
std::shared_ptr<Node> NodeAt(Node& top, std::wstring const& path);
/// The child of a group, or the profile of a profile list. KeyError when there is none.
std::shared_ptr<Node> NodeNamed(Node& node, std::wstring const& name);
/// The item of a list, from its end where negative. IndexError when there is none.
std::shared_ptr<Node> NodeOfItem(Node& list, py::ssize_t index);
/// The index as the library counts it. IndexError when there is none.
std::size_t IndexIn(Node& list, py::ssize_t index);

} // namespace ZantrelPython
