// SPDX-License-Identifier: Apache-2.0
#include <zantrel/editing/items.h>

#include "editing/entries.h"
#include "editing/findings.h"

#include <cstdint>
#include <memory>
#include <utility>

// A sequence of bags can only grow. So a list that changes otherwise is built anew beside the old one, which
// then goes as a whole, when nothing can fail any more.

namespace Zantrel::Editing {

namespace {

std::optional<Finding> AgainstIndex(Place const& list, std::size_t index) {
    return index < SizeOf(list)
               ? std::nullopt
               : std::optional(MakeFinding(FindingKind::OutOfRange, list, std::to_wstring(index),
                                           std::to_wstring(SizeOf(list))));
}

PersistentProperties const& BagAt(ItemProperty const& items, std::size_t index) {
    return items.m_value.GetProperty(static_cast<std::int32_t>(index));
}

/// Puts other items in the place of a list's.
void Replace(Place const& list, std::unique_ptr<ItemProperty> items) {
    PersistentProperties& bag = *list.GetCursor().m_pProperties;
    std::wstring const name = L"Value";
    bag.AddProperty(name, items.release()); // behind the old ones
    bag.RemoveProperty(name, true);         // allocates nothing
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
        ItemProperty const& old = *FindItems(list);
        auto moved = std::make_unique<ItemProperty>();
        for (std::size_t i = 0, next = 0; i < SizeOf(list); ++i) {
            next += next == from; // which comes at its new place alone
            moved->m_value.AddProperty() = BagAt(old, i == to ? from : next++);
        }
        Replace(list, std::move(moved));
        EntryPlace::SetBag(*change.entry,
                           FindItems(list)->m_value.GetProperty(static_cast<std::int32_t>(to)));
    }
    return change;
}

EntryChange RemoveItem(Place const& list, std::size_t index) {
    EntryChange change;
    change.finding =
        FirstOf([&] { return AgainstKind(list, PlaceKind::List); }, [&] { return AgainstIndex(list, index); },
                [&] { return AgainstRemoving(list); }, [&] { return AgainstRemovingItem(list, index); });
    if (change) {
        ItemProperty const& old = *FindItems(list);
        auto rest = std::make_unique<ItemProperty>();
        for (std::size_t i = 0; i < SizeOf(list); ++i) {
            if (i != index) {
                rest->m_value.AddProperty() = BagAt(old, i);
            }
        }
        Replace(list, std::move(rest));
    }
    return change;
}

} // namespace Zantrel::Editing
