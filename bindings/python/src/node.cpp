// SPDX-License-Identifier: Apache-2.0
#include "node.h"

#include "errors.h"

#include <zantrel/layout/layout_node.h>

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace ZantrelPython {

using namespace Zantrel;

namespace {

/// As a walk over the values has it, also of a node that is a list and a profile list in one.
PlaceKind KindOf(LayoutNode const& layout) {
    return layout.m_isProfileList || layout.m_isCategoryList ? PlaceKind::ProfileList
           : layout.m_isList                                 ? PlaceKind::List
           : layout.m_type == Group                          ? PlaceKind::Group
                                                             : PlaceKind::Leaf;
}

/// The segment up to the next "/", which is taken off with it.
std::wstring_view NextSegment(std::wstring_view& path) {
    std::size_t const end = path.find(L'/');
    std::wstring_view const segment = path.substr(0, end);
    path = end == std::wstring_view::npos ? std::wstring_view() : path.substr(end + 1);
    return segment;
}

/// Digits alone, and no more of them than a list may have items, so that no sum runs over.
std::optional<std::size_t> NumberOf(std::wstring_view text) {
    std::size_t number = 0;
    for (wchar_t const digit : text) {
        if (digit < L'0' || digit > L'9' || number > 100000000) {
            return std::nullopt;
        }
        number = 10 * number + static_cast<std::size_t>(digit - L'0');
    }
    return text.empty() ? std::nullopt : std::optional(number);
}

/// KeyError for what a path names below a node. In a path of the library's own form the node is the root, and
/// the farthest place that the path leads to is what a person has to know.
[[noreturn]] void RaiseNotFound(Node& node, std::wstring_view path) {
    std::shared_ptr<Node> reached = node.shared_from_this();
    std::wstring_view wanted = path.substr(0, path.find(L'/'));
    // Below another node the path is one of Python's, of which a prefix may be a path from the root by
    // chance.
    std::size_t end = node.Parent() ? path.npos : path.rfind(L'_');
    for (; end != path.npos && end != 0; end = path.rfind(L'_', end - 1)) {
        if (auto const place = Editing::Place::Find(node.Database()->Get(), path.substr(0, end))) {
            reached = Node::Of(node.Database(), *place);
            wanted = path.substr(end + 1);
            std::wstring const entry = reached->Layout().m_nodeName + L'[';
            bool const isEntry =
                reached->Kind() == PlaceKind::ProfileList && wanted.substr(0, entry.size()) == entry;
            wanted.remove_prefix(isEntry ? entry.size() : 0);
            wanted = wanted.substr(0, wanted.find(isEntry ? L']' : L'_'));
            break;
        }
    }
    RaiseUnknownName(std::wstring(wanted), WhereIs(*reached), NamesIn(*reached));
}

/// The entry of a profile list that a path begins with, which is taken off. Names may hold "/": the longest
/// counts.
std::shared_ptr<Node> NextProfile(Node& profiles, std::wstring_view& path) {
    for (std::size_t end = path.size();; end = path.rfind(L'/', end - 1)) {
        if (end == std::wstring_view::npos) {
            return nullptr;
        }
        std::wstring const name(path.substr(0, end));
        bool const isDefault = name == DefaultProfileName;
        if (isDefault || HasProfile(profiles, name)) {
            path = path.substr(end == path.size() ? end : end + 1);
            return isDefault ? profiles.DefaultEntry() : profiles.Profile(name);
        }
        if (end == 0) {
            return nullptr;
        }
    }
}

/// The next node on a path, or null; the step is taken off. By the layout, of which each node knows its own:
/// nothing is looked up by a path from the top.
std::shared_ptr<Node> NextNode(Node& node, std::wstring_view& path) {
    switch (KindOf(node.Layout())) {
    case PlaceKind::ProfileList:
        if (node.Kind() == PlaceKind::ProfileList) {
            return NextProfile(node, path);
        }
        break;
    case PlaceKind::List:
        if (node.Kind() == PlaceKind::List) {
            std::wstring_view const segment = NextSegment(path);
            if (segment == DefaultProfileName) {
                return node.DefaultEntry();
            }
            std::optional<std::size_t> const index = NumberOf(segment);
            return index && *index < node.Cursor().GetSize() ? node.Item(*index) : nullptr;
        }
        break;
    default:
        break;
    }
    LayoutNode const* const child =
        node.Layout().m_type == Group ? node.Layout().GetNode(NextSegment(path)) : nullptr;
    return child != nullptr ? node.Child(*child) : nullptr;
}

/// The node of that path of the library's own form, `top` or one below it; null where there is none.
std::shared_ptr<Node> FindBelow(std::shared_ptr<Node> top, std::wstring_view path) {
    std::vector<std::shared_ptr<Node>> open{std::move(top)};
    while (!open.empty()) {
        std::shared_ptr<Node> const node = std::move(open.back());
        open.pop_back();
        std::wstring const here = node->Path();
        if (here == path) {
            return node;
        }
        if (path.substr(0, here.size() + 1) != here + L'_') {
            continue;
        }
        bool const isList = node->Kind() == PlaceKind::List;
        if (isList || node->Kind() == PlaceKind::ProfileList) {
            open.push_back(node->DefaultEntry());
        }
        std::vector<std::wstring> const names = NamesIn(*node);
        for (std::size_t i = 0; i < names.size(); ++i) {
            open.push_back(isList ? node->Item(i) : NodeNamed(*node, names[i]));
        }
    }
    return nullptr;
}

/// What a path of the library's own form, as differences have it, names in the template of a list; null where
/// that is nothing. The library itself looks up what stands in files, and templates don't.
std::shared_ptr<Node> FindInTemplate(std::shared_ptr<DatabaseHandle> const& database,
                                     std::wstring const& path) {
    std::size_t end = path.find(DefaultProfileName) != path.npos ? path.rfind(L'_') : path.npos;
    for (; end != path.npos && end != 0; end = path.rfind(L'_', end - 1)) {
        auto const place = Editing::Place::Find(database->Get(), std::wstring_view(path).substr(0, end));
        if (place && place->GetKind() == PlaceKind::List) {
            if (auto const found = FindBelow(Node::Of(database, *place)->DefaultEntry(), path)) {
                return found;
            }
        }
    }
    return nullptr;
}

/// One less, of an index, which has no sign.
constexpr std::size_t Back = std::numeric_limits<std::size_t>::max();

} // namespace

bool Node::Step::operator<(Step const& other) const {
    return std::tie(kind, layout, index, profile) <
           std::tie(other.kind, other.layout, other.index, other.profile);
}

// The class is what Python sees of the node, and stays: a node never becomes one of another kind, since the
// layout doesn't change while a database stands on it. What isn't there raises here, by the first Cursor.
std::shared_ptr<Node> Node::Make(std::shared_ptr<DatabaseHandle> database, std::shared_ptr<Node> parent,
                                 Step step) {
    bool const isEntry = step.kind == PlaceKind::Item || step.kind == PlaceKind::Profile ||
                         step.kind == PlaceKind::DefaultProfile;
    std::shared_ptr<Node> node;
    if (step.kind == PlaceKind::List) {
        node = std::make_shared<ListNode>();
    } else if (step.kind == PlaceKind::ProfileList) {
        node = std::make_shared<ProfilesNode>();
    } else if (step.kind == PlaceKind::Leaf || (isEntry && step.layout->m_type != Zantrel::Group)) {
        node = std::make_shared<ParameterNodeOf>();
    } else {
        node = std::make_shared<GroupNode>();
    }
    node->m_database = std::move(database);
    node->m_parent = std::move(parent);
    node->m_step = std::move(step);
    node->Cursor();
    return node;
}

// A node is the last to hold those that it stands in, as a rule: they end here one by one and not each within
// the end of the one below, which on the small stack of a thread is more than a deep layout leaves.
Node::~Node() {
    if (m_database && m_database->m_root == this) {
        m_database->m_root = nullptr;
    }
    for (std::shared_ptr<Node> above = LeaveParent(); above && above.use_count() == 1;) {
        above = above->LeaveParent();
    }
}

std::shared_ptr<Node> Node::LeaveParent() {
    std::shared_ptr<Node> parent = std::move(m_parent);
    if (parent) {
        // A node that has gone stands under its old step no more, and somebody else may.
        auto const found = parent->m_below.find(m_step);
        if (found != parent->m_below.end() && *found == this) {
            parent->m_below.erase(found);
        }
    }
    return parent;
}

// The database knows its root by address alone: if it held it, neither would ever end.
std::shared_ptr<Node> Node::Root(std::shared_ptr<DatabaseHandle> const& database) {
    if (database->m_root != nullptr) {
        return database->m_root->shared_from_this();
    }
    Step step;
    step.layout = database->Get().GetProfileEditor().m_pNode;
    std::shared_ptr<Node> root = Make(database, nullptr, std::move(step));
    database->m_root = root.get();
    return root;
}

// In step with the nodes that live, since each takes itself out: what is found can still be shared.
std::shared_ptr<Node> Node::Below(Step step) {
    auto const found = m_below.find(step);
    if (found != m_below.end()) {
        return (*found)->shared_from_this();
    }
    std::shared_ptr<Node> node = Make(m_database, shared_from_this(), std::move(step));
    m_below.insert(node.get());
    return node;
}

std::shared_ptr<Node> Node::Child(LayoutNode const& layout) {
    return Below({KindOf(layout), &layout, 0, {}});
}

std::shared_ptr<Node> Node::Item(std::size_t index) {
    return Below({PlaceKind::Item, m_step.layout, index, {}});
}

std::shared_ptr<Node> Node::Profile(std::wstring const& name) {
    return Below({PlaceKind::Profile, m_step.layout, 0, name});
}

std::shared_ptr<Node> Node::DefaultEntry() {
    return Below({PlaceKind::DefaultProfile, m_step.layout, 0, {}});
}

std::shared_ptr<Node> Node::Of(std::shared_ptr<DatabaseHandle> const& database, Editing::Place const& place) {
    std::shared_ptr<Node> node = Root(database);
    for (std::size_t depth = 1; depth <= place.GetDepth(); ++depth) {
        Editing::Place const step = place.GetOuter(depth);
        switch (step.GetKind()) {
        case PlaceKind::Item:
            node = node->Item(step.GetIndex());
            break;
        case PlaceKind::Profile:
            node = node->Profile(std::wstring(step.GetName()));
            break;
        case PlaceKind::DefaultProfile:
            node = node->DefaultEntry();
            break;
        default:
            node = node->Child(*step.GetLayoutNode());
        }
    }
    return node;
}

ParameterNode Node::Find() {
    if (!m_parent) {
        return m_database->Get().GetProfileEditor();
    }
    ParameterNode const& above = m_parent->m_cursor;
    switch (m_step.kind) {
    case PlaceKind::Item:
        // Fewer than there were where the library itself has changed the list, as by a read.
        return m_step.index < above.GetSize() ? above.GetListNode(m_step.index) : ParameterNode();
    case PlaceKind::Profile:
        return above.GetProfile(m_step.profile.c_str());
    case PlaceKind::DefaultProfile:
        return above.GetDefault();
    default:
        return above.Get(m_step.layout);
    }
}

bool Node::IsFresh() const { return !m_isGone && m_changes == m_database->m_changes; }

// Found anew from the outermost that has to be, without recursion.
ParameterNode const& Node::Cursor() {
    static_cast<void>(m_database->Get()); // raises while another thread has it
    std::vector<Node*> stale;
    for (Node* node = this; node != nullptr && !node->IsFresh(); node = node->m_parent.get()) {
        stale.push_back(node);
        if (node->m_isGone) {
            break;
        }
    }
    for (; !stale.empty(); stale.pop_back()) {
        Node& node = *stale.back();
        node.m_cursor = node.m_isGone ? ParameterNode() : node.Find();
        if (!node.m_cursor.IsValid()) {
            Raise("StaleNode",
                  StrOf(L"the node \"" + node.Name() + L"\" has gone from its database: take it anew"));
        }
        node.m_changes = m_database->m_changes;
    }
    return m_cursor;
}

// The editing library asks for the way to a place, too, since what counts for it depends on the profiles and
// items that it lies in.
Editing::Place Node::Place() {
    Cursor();
    std::vector<Step const*> steps;
    for (Node const* node = this; node->m_parent; node = node->m_parent.get()) {
        steps.push_back(&node->m_step);
    }
    Editing::Place place(m_database->Get());
    for (; !steps.empty(); steps.pop_back()) {
        Step const& step = *steps.back();
        place = step.kind == PlaceKind::Item             ? place.GetItem(step.index)
                : step.kind == PlaceKind::Profile        ? place.GetProfile(step.profile)
                : step.kind == PlaceKind::DefaultProfile ? place.GetDefaultProfile()
                                                         : place.Get(step.layout->m_name);
    }
    return place;
}

bool Node::HasGone() const {
    Node const* node = this;
    while (node != nullptr && !node->m_isGone) {
        node = node->m_parent.get();
    }
    return node != nullptr;
}

std::wstring Node::Name() const {
    switch (m_step.kind) {
    case PlaceKind::Item:
        return std::to_wstring(m_step.index);
    case PlaceKind::Profile:
        return m_step.profile;
    case PlaceKind::DefaultProfile:
        return DefaultProfileName;
    default:
        return m_step.layout->m_name;
    }
}

// A shift changes no order, so that the indices are changed where the nodes stand among the others. What
// comes to stand elsewhere is taken out before its step changes, and put back after.

Node::Nodes::node_type Node::Take(Step const& step) {
    auto const found = m_below.find(step);
    return found != m_below.end() ? m_below.extract(found) : Nodes::node_type();
}

void Node::ShiftItems(std::size_t first, std::size_t end, std::size_t by) {
    auto at = m_below.lower_bound(Step{PlaceKind::Item, m_step.layout, first, {}});
    for (; at != m_below.end() && (*at)->m_step.kind == PlaceKind::Item && (*at)->m_step.index < end; ++at) {
        (*at)->m_step.index += by;
    }
}

void Node::ItemRemoved(std::size_t index) {
    ++m_database->m_changes;
    if (auto const item = Take({PlaceKind::Item, m_step.layout, index, {}})) {
        item.value()->m_isGone = true;
    }
    ShiftItems(index, std::numeric_limits<std::size_t>::max(), Back);
}

void Node::ItemMoved(std::size_t from, std::size_t to) {
    ++m_database->m_changes;
    auto item = Take({PlaceKind::Item, m_step.layout, from, {}});
    if (from < to) {
        ShiftItems(from, to + 1, Back);
    } else {
        ShiftItems(to, from, 1);
    }
    if (item) {
        item.value()->m_step.index = to;
        m_below.insert(std::move(item));
    }
}

void Node::ProfileRemoved(std::wstring const& name) {
    ++m_database->m_changes;
    if (auto const profile = Take({PlaceKind::Profile, m_step.layout, 0, name})) {
        profile.value()->m_isGone = true;
    }
}

void Node::ProfileRenamed(std::wstring const& name, std::wstring newName) {
    ++m_database->m_changes;
    if (auto profile = Take({PlaceKind::Profile, m_step.layout, 0, name})) {
        profile.value()->m_step.profile.swap(newName);
        m_below.insert(std::move(profile));
    }
}

// The default profiles and templates stay, and so do groups: they stand for what the new values have there.
void Node::EntriesReplaced() {
    ++m_database->m_changes;
    std::vector<Node*> open{this};
    while (!open.empty()) {
        Nodes& below = open.back()->m_below;
        open.pop_back();
        for (auto at = below.begin(); at != below.end();) {
            Node& node = **at;
            if (node.m_step.kind == PlaceKind::Item || node.m_step.kind == PlaceKind::Profile) {
                node.m_isGone = true;
                at = below.erase(at);
            } else {
                open.push_back(&node);
                ++at;
            }
        }
    }
}

std::vector<LayoutNode const*> ChildrenOf(LayoutNode const& group) {
    std::vector<LayoutNode const*> children;
    for (LayoutNode const* child : group.m_children) {
        if (group.GetNode(child->m_name) == child) { // of several of a name only the latest is found
            children.push_back(child);
        }
    }
    return children;
}

std::wstring WhereIs(Node& node) {
    return node.Parent() ? node.Path() : node.Database()->Layout()->Get().m_name;
}

bool HasProfile(Node& profiles, std::wstring const& name) {
    // The name that the library has for the default profile is that of no profile here: see
    // Node::DefaultEntry.
    return name != L"::DefaultProfile::" && name.find(L'\0') == std::wstring::npos &&
           profiles.Cursor().HasProfile(name.c_str());
}

// Of a parameter none, so that a walk needs no question of its own about what it has come to.
std::vector<std::wstring> NamesIn(Node& node) {
    std::vector<std::wstring> names;
    if (node.Kind() == PlaceKind::ProfileList) {
        node.Cursor().GetProfiles(names);
        names.erase(std::unique(names.begin(), names.end()), names.end()); // those of a name stand together
    } else if (node.Kind() == PlaceKind::List) {
        for (std::size_t i = 0; i < node.Cursor().GetSize(); ++i) {
            names.push_back(std::to_wstring(i));
        }
    } else if (node.Layout().m_type == Group) {
        node.Cursor(); // raises when this is stale
        for (LayoutNode const* child : ChildrenOf(node.Layout())) {
            names.push_back(child->m_name);
        }
    }
    return names;
}

// Names may hold both "/" and "_", so that neither form can be told by its look: Python's is tried first.
std::shared_ptr<Node> NodeAt(Node& top, std::wstring const& path) {
    std::shared_ptr<Node> node = top.shared_from_this();
    std::wstring_view rest = path;
    while (!rest.empty()) {
        std::wstring_view const here = rest;
        std::shared_ptr<Node> next = NextNode(*node, rest);
        if (!next) {
            // Not in this form; perhaps in the library's own, which begins at the profile editor.
            if (auto const place = Editing::Place::Find(top.Database()->Get(), path)) {
                return Node::Of(top.Database(), *place);
            }
            if (auto const found = FindInTemplate(top.Database(), path)) {
                return found;
            }
            RaiseNotFound(*node, here);
        }
        node = std::move(next);
    }
    return node;
}

std::shared_ptr<Node> NodeNamed(Node& node, std::wstring const& name) {
    if (node.Kind() == PlaceKind::ProfileList) {
        if (HasProfile(node, name)) {
            return node.Profile(name);
        }
    } else if (LayoutNode const* const child = node.Layout().GetNode(name)) {
        return node.Child(*child);
    }
    RaiseUnknownName(name, WhereIs(node), NamesIn(node));
}

// The sentence says how many there are, which Python's own doesn't: the path alone may be of any of a
// hundred.
std::size_t IndexIn(Node& list, py::ssize_t index) {
    auto const size = static_cast<py::ssize_t>(list.Cursor().GetSize());
    py::ssize_t const counted = index < 0 ? index + size : index;
    if (counted < 0 || counted >= size) {
        throw py::index_error(
            py::cast<std::string>(StrOf(list.Path() + L" has " + std::to_wstring(list.Cursor().GetSize()) +
                                        L" items, and no [" + std::to_wstring(index) + L']')));
    }
    return static_cast<std::size_t>(counted);
}

std::shared_ptr<Node> NodeOfItem(Node& list, py::ssize_t index) { return list.Item(IndexIn(list, index)); }

} // namespace ZantrelPython
