// SPDX-License-Identifier: Apache-2.0
#include "editing/unique_values.h"

#include "editing/findings.h"

#include <zantrel/database/visit_value.h>
#include <zantrel/editing/value_text.h>

#include <functional>

// Within one container a value is kept by node and text, so that finding an equal one takes no search. A
// container's values go with it: of lists in a list each is held for itself. Default profiles take no part,
// since every profile begins as a copy of one.

namespace Zantrel::Editing {

namespace {

/// The step to an entry of a container as a path has it.
std::wstring StepOf(PlaceView const& container, std::size_t item, std::wstring_view profile) {
    bool const isList = container.GetKind() == PlaceKind::List;
    std::wstring const name = isList ? std::to_wstring(item) : std::wstring(profile);
    return container.GetLayoutNode()->m_nodeName + L"[" + name + L"]";
}

/// The depth of the innermost entry that `place` is or stands in; 0 where there is none.
std::size_t DepthOfEntry(PlaceView const& place) {
    std::size_t depth = place.GetDepth();
    while (depth != 0 && !place.GetOuter(depth).IsEntry()) {
        --depth;
    }
    return depth;
}

/// Whether both are one place.
bool IsSame(ParameterView const& left, ParameterView const& right) {
    void const* values[2] = {nullptr, nullptr};
    VisitValue(left, [&](auto const& value) { values[0] = &value; });
    VisitValue(right, [&](auto const& value) { values[1] = &value; });
    return values[0] != nullptr && values[0] == values[1];
}

/// The path of what stands in another entry as `place` does in its own, at `depth`.
std::wstring PathInEntry(PlaceView const& place, std::size_t depth, std::size_t item,
                         std::wstring_view profile) {
    PlaceView const container = place.GetOuter(depth - 1);
    std::wstring const path = container.GetPath();
    // What follows the entry's step is the same in both, so that no place is looked for to name it.
    std::size_t const ownStep = place.GetOuter(depth).GetPath().size();
    return path + (path.empty() ? L"" : L"_") + StepOf(container, item, profile) +
           place.GetPath().substr(ownStep);
}

} // namespace

std::wstring OfOneZero(std::wstring text) { return text == L"-0" ? L"0" : text; }

/// For one place alone, where no walk has filled a table: its entry's siblings are gone through once. A
/// default profile has no opponents.
std::wstring FindSameValue(PlaceView const& place, std::wstring const& text) {
    std::size_t const depth = DepthOfEntry(place);
    if (depth == 0 || text.empty() || place.GetOuter(depth).GetKind() == PlaceKind::DefaultProfile) {
        return {};
    }
    for (PlaceWalk walk(place.GetOuter(depth - 1)); walk.Next();) {
        PlaceView const& entry = walk.GetPlace();
        if (entry.GetDepth() < depth) {
            continue; // the container
        }
        walk.SkipContent();
        bool const isEntry = depth == place.GetDepth();
        ParameterView const cursor =
            isEntry ? entry.GetCursor() : entry.GetCursor().Get(place.GetLayoutNode());
        if (entry.GetKind() != PlaceKind::DefaultProfile && OfOneZero(TextOf(cursor)) == text &&
            !IsSame(cursor, place.GetCursor())) {
            return PathInEntry(place, depth, entry.GetIndex(), entry.GetName());
        }
    }
    return {};
}

std::size_t UniqueValues::KeyHash::operator()(Key const& key) const noexcept {
    return std::hash<std::wstring>()(key.second) ^ std::hash<LayoutNode const*>()(key.first);
}

void UniqueValues::Enter(PlaceView const& place) {
    while (!m_containers.empty() && place.GetDepth() <= m_containers.back().depth) {
        m_containers.pop_back();
    }
    if (place.IsEntry() && !m_containers.empty()) {
        Container& container = m_containers.back();
        container.isInDefaultProfile = place.GetKind() == PlaceKind::DefaultProfile;
        container.item = place.GetIndex();
        container.profile = place.GetName();
    } else if (place.GetKind() == PlaceKind::List || place.GetKind() == PlaceKind::ProfileList) {
        m_containers.push_back({place.GetDepth()});
    }
}

void UniqueValues::Add(PlaceView const& place, std::wstring text, std::vector<Finding>& findings) {
    Container& container = m_containers.back();
    if (container.isInDefaultProfile || text.empty()) {
        return;
    }
    auto const [at, isNew] = container.values.try_emplace(
        Key(place.GetLayoutNode(), std::move(text)),
        First{place.GetCursor(), container.item, container.profile, findings.size(), m_added++});
    if (isNew) {
        return;
    }
    First& first = at->second;
    std::wstring const& value = at->first.second;
    std::wstring const path = PathInEntry(place, container.depth + 1, first.item, first.profile);
    findings.push_back(MakeFinding(FindingKind::NotUnique, place, value, path));
    if (!std::exchange(first.isTold, true)) {
        Finding finding = MakeFinding(FindingKind::NotUnique, place, value, findings.back().path);
        finding.path = path;
        finding.cursor = first.cursor;
        m_late.push_back({first.index, first.turn, std::move(finding)});
    }
}

} // namespace Zantrel::Editing
