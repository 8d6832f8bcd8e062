// SPDX-License-Identifier: Apache-2.0
#include "editing/entries.h"

#include "editing/findings.h"

#include <zantrel/editing/look.h>

#include <cstdint>
#include <utility>

// What a user may do is asked here alone: cursors ask nobody, as hosts may do more than their users. All
// questions come before the first change, and each gives at most one finding, so that a refusal is one
// sentence and has touched nothing.

namespace Zantrel::Editing {

namespace {

/// Counts profiles only where their number is near the limit: the bag, which holds a few flags beside them,
/// knows its size.
bool HasMoreThan(std::uint64_t limit, Place const& container) {
    // Profiles are entries of the bag itself, so that it tells at once when there are few; items aren't.
    bool const isOfProfiles = container.GetLayoutNode()->m_isProfileList;
    bool const mayHave = !isOfProfiles || container.GetCursor().m_pProperties->GetNumProperties() > limit;
    return mayHave && SizeOf(container) > limit;
}

/// For a container and the number of entries that there would be.
Finding AgainstNumber(FindingKind kind, PlaceView const& container, std::size_t count, std::uint64_t limit,
                      std::wstring const& message) {
    Finding finding = MakeFinding(kind, container, std::to_wstring(count), std::to_wstring(limit));
    bool const isTooMany = kind == FindingKind::TooManyItems;
    finding.sentence = !message.empty() ? message
                                        : L"There would be " + finding.value + L" entries; at " +
                                              (isTooMany ? L"most " : L"least ") + finding.limit +
                                              (isTooMany ? L" are allowed." : L" are needed.");
    return finding;
}

std::optional<Finding> AgainstAddingAndRemoving(Place const& container) {
    if (auto finding = AgainstChanging(container)) {
        return finding;
    }
    if (!container.GetLayoutNode()->m_userCanAddRemove) {
        return NotAllowed(container, L"a user can't add or remove entries.");
    }
    if (container.GetCursor().GetDisableAddRemove()) {
        return NotAllowed(container, L"adding and removing entries is disabled.");
    }
    return std::nullopt;
}

} // namespace

ParameterNode CursorOn(Place const& container, PersistentProperties* entry) {
    ParameterNode cursor;
    cursor.m_pNode = container.GetCursor().m_pNode;
    cursor.m_pProperties = entry;
    cursor.m_pParentProperties = container.GetCursor().m_pProperties;
    return cursor;
}

ItemProperty* FindItems(Place const& list) {
    return PropertyCast<IndexedProperties<PersistentProperties>>(
        list.GetCursor().m_pProperties->FindProperty(L"Value"));
}

std::size_t SizeOf(PlaceView const& container) {
    return static_cast<std::size_t>(container.GetCursor().GetSize());
}

std::optional<Finding> AgainstKind(PlaceView const& place, PlaceKind kind) {
    if (place.IsValid() && place.GetKind() == kind) {
        return std::nullopt;
    }
    return NotAllowed(place, kind == PlaceKind::List ? L"it is no list." : L"it is no list of profiles.");
}

std::optional<Finding> AgainstChanging(PlaceView const& place) {
    Look const look = LookOf(place);
    if (look.isEditable) {
        return std::nullopt;
    }
    // Several reasons may be there; the outermost is what a user would have to change first.
    Finding finding = MakeFinding(FindingKind::ReadOnly, place);
    for (LookReason const& reason : look.reasons) {
        if (!reason.isAboutVisibility) {
            finding.sentence = SentenceOf(reason, place);
            break;
        }
    }
    return finding;
}

std::optional<Finding> AgainstAdding(Place const& container) {
    std::uint64_t const most = container.GetLayoutNode()->m_multiplicityMax;
    auto finding = AgainstAddingAndRemoving(container);
    if (!finding && most != 0 && HasMoreThan(most - 1, container)) {
        finding = AgainstNumber(FindingKind::TooManyItems, container, SizeOf(container) + 1, most,
                                container.GetLayoutNode()->m_multiplicityMaxMessage);
    }
    return finding;
}

std::optional<Finding> AgainstRemoving(Place const& container) {
    std::uint64_t const least = container.GetLayoutNode()->m_multiplicityMin;
    auto finding = AgainstAddingAndRemoving(container);
    if (!finding && least != 0 && !HasMoreThan(least, container)) {
        finding = AgainstNumber(FindingKind::TooFewItems, container, SizeOf(container) - 1, least,
                                container.GetLayoutNode()->m_multiplicityMinMessage);
    }
    return finding;
}

Finding NotAllowed(PlaceView const& place, std::wstring reason) {
    return MakeFinding(FindingKind::NotAllowed, place, {}, std::move(reason));
}

/// An entry has the container's node, as places have it, and as yet no bag.
Place EntryPlace::In(Place const& container, PlaceKind kind) {
    return container.With(CursorOn(container, nullptr), container.GetLayoutNode(), kind);
}

Place EntryPlace::OfItem(Place const& list, std::size_t index) {
    Place place = In(list, PlaceKind::Item);
    place.m_steps.back().index = index;
    return place;
}

Place EntryPlace::OfProfile(Place const& list, std::wstring name) {
    Place place = In(list, PlaceKind::Profile);
    place.m_steps.back().profile = std::move(name);
    return place;
}

} // namespace Zantrel::Editing
