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
// the name that it would have, and the rest below it; the first way that leads to the end is taken.

template <class Cursor>
std::optional<BasicPlace<Cursor>> BasicPlace<Cursor>::Find(Database& database, std::wstring_view path) {
    BasicPlace place(database);
    bool const isFound = place.IsValid() && (path.empty() || place.FindBelow(path));
    return isFound ? std::optional(std::move(place)) : std::nullopt;
}

/// Goes to the place of that path below this one, or stays and gives false.
template <class Cursor> bool BasicPlace<Cursor>::FindBelow(std::wstring_view path) {
    return IsValid() && (IsContainer(GetKind()) ? FindEntry(path) : FindChild(path));
}

/// `path` is what follows the step: nothing, or "_" and further steps.
template <class Cursor> bool BasicPlace<Cursor>::FindBelowStep(BasicPlace step, std::wstring_view path) {
    bool const isFound =
        step.IsValid() && (path.empty() || (path.front() == L'_' && step.FindBelow(path.substr(1))));
    if (isFound) {
        *this = std::move(step);
    }
    return isFound;
}

template <class Cursor> bool BasicPlace<Cursor>::FindChild(std::wstring_view path) {
    for (LayoutNode const* child : GetLayoutNode()->m_children) {
        std::wstring const& name = child->m_name;
        if (path.substr(0, name.size()) != name) {
            continue;
        }
        Cursor const cursor = GetCursor().Get(child);
        if (FindBelowStep(With(cursor, child, KindOf(cursor)), path.substr(name.size()))) {
            return true;
        }
    }
    return false;
}

template <class Cursor> bool BasicPlace<Cursor>::FindEntry(std::wstring_view path) {
    std::wstring const& entryName = GetLayoutNode()->m_nodeName;
    if (path.substr(0, entryName.size()) != entryName) {
        return false;
    }
    path.remove_prefix(entryName.size());
    bool const isList = GetKind() == PlaceKind::List;
    if (!isList && path.substr(0, DefaultProfileStep.size()) == DefaultProfileStep) {
        return FindBelowStep(GetDefaultProfile(), path.substr(DefaultProfileStep.size()));
    }
    if (path.empty() || path.front() != L'[') {
        return false;
    }
    // The name of a profile may hold brackets: each that closes may be the one.
    for (std::size_t end = path.find(L']'); end != path.npos; end = path.find(L']', end + 1)) {
        std::wstring const name(path.substr(1, end - 1));
        std::optional<std::size_t> const index = isList ? IndexIn(name) : std::nullopt;
        bool const isEntry = isList ? index && *index < GetCursor().GetSize()
                                    : name != DefaultProfileName && GetCursor().HasProfile(name.c_str());
        if (isEntry && FindBelowStep(isList ? GetItem(*index) : GetProfile(name), path.substr(end + 1))) {
            return true;
        }
    }
    return false;
}

template class BasicPlace<ParameterNode>;
template class BasicPlace<ParameterView>;

} // namespace Zantrel::Editing
