// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/place.h>

#include "editing/default_profile.h"
#include "editing/place_kind.h"

// A place is its steps by value: a copy of one stays good while a walk goes on, and going outwards is
// cutting. An entry is a step of its own behind its container and has the same node.

namespace Zantrel::Editing {

namespace {

LayoutNode const* LayoutOf(ParameterNode const& cursor) { return cursor.m_pNode; }
LayoutNode const* LayoutOf(ParameterView const& cursor) { return cursor.GetLayoutNode(); }

/// What stands under a cursor on a node, as a walk over it has it.
template <class Cursor> PlaceKind KindOf(Cursor const& cursor) {
    Walk<Cursor> walk(cursor);
    return walk.Next() ? walk.Kind() : PlaceKind::Group;
}

/// The number that the text is, if it is one and written as paths have it.
std::optional<std::size_t> IndexIn(std::wstring_view text) {
    std::size_t index = 0;
    for (wchar_t const digit : text) {
        if (digit < L'0' || digit > L'9' || index > 0xFFFFFFFF) {
            return std::nullopt;
        }
        index = 10 * index + static_cast<std::size_t>(digit - L'0');
    }
    bool const isWritten = text == L"0" || (!text.empty() && text.front() != L'0');
    return isWritten ? std::optional(index) : std::nullopt;
}

} // namespace

template <class Cursor>
BasicPlace<Cursor>::BasicPlace(Database& database)
    : m_steps{Step(database.GetProfileEditor(), LayoutOf(database.GetProfileEditor()), PlaceKind::Group)} {}

template <class Cursor> bool BasicPlace<Cursor>::IsValid() const { return GetCursor().IsValid(); }

template <class Cursor> bool BasicPlace<Cursor>::IsEntry() const noexcept {
    return Editing::IsEntry(GetKind());
}

template <class Cursor> bool BasicPlace<Cursor>::IsLeaf() const noexcept {
    return GetKind() == PlaceKind::Leaf ||
           (IsEntry() && (GetLayoutNode() == nullptr || GetLayoutNode()->Size() == 0));
}

template <class Cursor> std::wstring_view BasicPlace<Cursor>::GetName() const noexcept {
    bool const isOfLayout = !IsEntry() && GetLayoutNode() != nullptr;
    return isOfLayout ? std::wstring_view(GetLayoutNode()->m_name) : m_steps.back().profile;
}

template <class Cursor> std::wstring BasicPlace<Cursor>::GetPath() const {
    std::wstring path;
    for (std::size_t i = 1; i < m_steps.size(); ++i) {
        Step const& step = m_steps[i];
        path.append(path.empty() ? L"" : L"_");
        if (step.layout == nullptr) {
            continue;
        }
        switch (step.kind) {
        case PlaceKind::Item:
            path.append(step.layout->m_nodeName)
                .append(L"[")
                .append(std::to_wstring(step.index))
                .append(L"]");
            break;
        case PlaceKind::Profile:
            path.append(step.layout->m_nodeName).append(L"[").append(step.profile).append(L"]");
            break;
        case PlaceKind::DefaultProfile:
            path.append(step.layout->m_nodeName).append(DefaultProfileStep);
            break;
        default:
            path.append(step.layout->m_name);
        }
    }
    return path;
}

template <class Cursor>
BasicPlace<Cursor> BasicPlace<Cursor>::With(Cursor const& cursor, LayoutNode const* layout,
                                            PlaceKind kind) const {
    BasicPlace place;
    place.m_steps.reserve(m_steps.size() + 1);
    place.m_steps.insert(place.m_steps.end(), m_steps.begin(), m_steps.end());
    place.m_steps.emplace_back(cursor, layout, kind);
    return place;
}

template <class Cursor> BasicPlace<Cursor> BasicPlace<Cursor>::Get(wchar_t const* name) const {
    Cursor const child = GetCursor().Get(name);
    return With(child, LayoutOf(child), KindOf(child));
}

template <class Cursor> BasicPlace<Cursor> BasicPlace<Cursor>::GetItem(std::size_t index) const {
    BasicPlace place = With(GetCursor().GetListNode(index), GetLayoutNode(), PlaceKind::Item);
    place.m_steps.back().index = index;
    return place;
}

template <class Cursor> BasicPlace<Cursor> BasicPlace<Cursor>::GetProfile(std::wstring const& name) const {
    BasicPlace place = With(GetCursor().GetProfile(name.c_str()), GetLayoutNode(), PlaceKind::Profile);
    place.m_steps.back().profile = name;
    return place;
}

template <class Cursor> BasicPlace<Cursor> BasicPlace<Cursor>::GetDefaultProfile() const {
    return With(GetCursor().GetDefault(), GetLayoutNode(), PlaceKind::DefaultProfile);
}

template <class Cursor> BasicPlace<Cursor> BasicPlace<Cursor>::GetOuter(std::size_t depth) const {
    BasicPlace place;
    place.m_steps.assign(m_steps.begin(), m_steps.begin() + static_cast<std::ptrdiff_t>(depth) + 1);
    return place;
}

// A path can't be taken apart, since names may hold what stands between two steps. So each step is tried by
// the name that it would have, and the rest below it; the first way that leads to the end is taken. The
// places that a way leads over stand on a stack of their own, so that a deep layout takes none of the
// thread's.

/// A place on the way, with what has been tried of the steps below it.
template <class Cursor> struct BasicPlace<Cursor>::Crossing {
    std::wstring_view path; ///< of what is looked for, from this place
    std::size_t next = 0;   ///< the position of the next child, or in the path that of the next bracket
};

template <class Cursor>
std::optional<BasicPlace<Cursor>> BasicPlace<Cursor>::Find(Database& database, std::wstring_view path) {
    BasicPlace place(database);
    bool const isFound = place.IsValid() && (path.empty() || place.FindBelow(path));
    return isFound ? std::optional(std::move(place)) : std::nullopt;
}

/// Goes to the place of that path below this one. False when there is none; then this is no place any more.
template <class Cursor> bool BasicPlace<Cursor>::FindBelow(std::wstring_view path) {
    std::vector<Crossing> way{{path}};
    while (!way.empty()) {
        std::optional<std::wstring_view> const rest = NextStep(way.back());
        if (!rest) {
            way.pop_back();
            m_steps.pop_back();
        } else if (IsValid() && rest->empty()) {
            return true;
        } else if (IsValid() && rest->front() == L'_') {
            way.push_back({rest->substr(1)});
        } else {
            m_steps.pop_back();
        }
    }
    return false;
}

/// Goes to the next place below this one whose name the path begins with, and gives what follows the name.
/// Stays where there is no further one.
template <class Cursor> std::optional<std::wstring_view> BasicPlace<Cursor>::NextStep(Crossing& crossing) {
    return IsContainer(GetKind()) ? NextEntry(crossing) : NextChild(crossing);
}

template <class Cursor> std::optional<std::wstring_view> BasicPlace<Cursor>::NextChild(Crossing& crossing) {
    LayoutNodes const& children = GetLayoutNode()->m_children;
    while (crossing.next < children.Size()) {
        LayoutNode const& child = children.At(crossing.next++);
        if (crossing.path.substr(0, child.m_name.size()) == child.m_name) {
            Cursor const cursor = GetCursor().Get(&child);
            m_steps.emplace_back(cursor, &child, KindOf(cursor));
            return crossing.path.substr(child.m_name.size());
        }
    }
    return std::nullopt;
}

template <class Cursor> std::optional<std::wstring_view> BasicPlace<Cursor>::NextEntry(Crossing& crossing) {
    std::wstring_view path = crossing.path;
    std::wstring const& entryName = GetLayoutNode()->m_nodeName;
    if (path.substr(0, entryName.size()) != entryName) {
        return std::nullopt;
    }
    path.remove_prefix(entryName.size());
    bool const isList = GetKind() == PlaceKind::List;
    bool const isFirst = crossing.next == 0;
    if (!isList && path.substr(0, DefaultProfileStep.size()) == DefaultProfileStep) {
        crossing.next = path.size();
        return isFirst ? (*this = GetDefaultProfile(), std::optional(path.substr(DefaultProfileStep.size())))
                       : std::nullopt;
    }
    if (path.empty() || path.front() != L'[') {
        return std::nullopt;
    }
    // The name of a profile may hold brackets: each that closes may be the one.
    for (std::size_t end = path.find(L']', crossing.next); end != path.npos; end = path.find(L']', end + 1)) {
        std::wstring const name(path.substr(1, end - 1));
        std::optional<std::size_t> const index = isList ? IndexIn(name) : std::nullopt;
        bool const isEntry = isList ? index && *index < GetCursor().GetSize()
                                    : name != DefaultProfileName && GetCursor().HasProfile(name.c_str());
        if (isEntry) {
            crossing.next = end + 1;
            *this = isList ? GetItem(*index) : GetProfile(name);
            return path.substr(end + 1);
        }
    }
    return std::nullopt;
}

template class BasicPlace<ParameterNode>;
template class BasicPlace<ParameterView>;

} // namespace Zantrel::Editing
