// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/items.h>

#include "editing/entries.h"
#include "editing/findings.h"

#include <cstdint>

namespace Zantrel::Editing {

namespace {

std::optional<Finding> AgainstIndex(Place const& list, std::size_t index) {
    return index < SizeOf(list)
               ? std::nullopt
               : std::optional(MakeFinding(FindingKind::OutOfRange, list, std::to_wstring(index),
                                           std::to_wstring(SizeOf(list))));
}

std::optional<Finding> AgainstRemovingItem(Place const& list, std::size_t index) {
    bool const onlyLast = !list.GetLayoutNode()->m_userCanRemoveAnyElement;
    if (onlyLast && index + 1 != SizeOf(list)) {
        return NotAllowed(list, L"a user can remove the last item only.");
    }
    return AgainstChanging(list.GetItem(index));
}

std::optional<Finding> AgainstSorting(Place const& list) {
    return list.GetLayoutNode()->m_userCanSort
               ? std::nullopt
               : std::optional(NotAllowed(list, L"a user can't reorder the items."));
}

} // namespace

EntryChange AddItem(Place const& list) {
    EntryChange change;
    change.finding =
        FirstOf([&] { return AgainstKind(list, PlaceKind::List); }, [&] { return AgainstAdding(list); });
    if (change) {
        // Before the item is there, as making the place may fail and the item couldn't go again.
        change.entry = EntryPlace::OfItem(list, SizeOf(list));
        EntryPlace::SetBag(*change.entry, *list.GetCursor().AddListNode(true).m_pProperties);
    }
    return change;
}

EntryChange MoveItem(Place const& list, std::size_t from, std::size_t to) {
    EntryChange change;
    change.finding =
        FirstOf([&] { return AgainstKind(list, PlaceKind::List); }, [&] { return AgainstChanging(list); },
                [&] { return AgainstSorting(list); }, [&] { return AgainstIndex(list, from); },
                [&] { return AgainstIndex(list, to); });
    if (change) {
        change.entry = EntryPlace::OfItem(list, to);
        IndexedProperties<PersistentProperties>& items = FindItems(list)->m_value;
        items.MoveProperty(static_cast<std::int32_t>(from), static_cast<std::int32_t>(to));
        EntryPlace::SetBag(*change.entry, items.GetProperty(static_cast<std::int32_t>(to)));
    }
    return change;
}

EntryChange RemoveItem(Place const& list, std::size_t index) {
    EntryChange change;
    change.finding =
        FirstOf([&] { return AgainstKind(list, PlaceKind::List); }, [&] { return AgainstIndex(list, index); },
                [&] { return AgainstRemoving(list); }, [&] { return AgainstRemovingItem(list, index); });
    if (change) {
        FindItems(list)->m_value.RemoveProperty(static_cast<std::int32_t>(index));
    }
    return change;
}

} // namespace Zantrel::Editing
