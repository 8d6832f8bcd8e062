// SPDX-License-Identifier: Apache-2.0
#include "layout/child_list.h"

#include <zantrel/layout/layout_node.h>
#include <zantrel/text/string_conversion.h>

#include "text/unicode.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Zantrel {

namespace {

/// Rows up to this length are closed up at once, which keeps the position and the slot one number in all but
/// the longest lists.
constexpr std::size_t ShortRow = 32;

/// The lowest set bit: how many slots the count of the `number`-th slot covers.
constexpr std::size_t Covered(std::size_t number) noexcept { return number & (~number + 1); }

template <class Row> void MakeRoomForOne(Row& row) {
    if (row.size() == row.capacity()) {
        row.reserve(2 * row.size() + 1);
    }
}

} // namespace

std::size_t ChildList::SlotAt(std::size_t position) const noexcept {
    if (IsRow()) {
        return position;
    }
    std::size_t passed = 0; // as many slots, with as many shown as `position` has lost
    for (std::size_t step = std::bit_floor(m_slots.size()); step != 0; step /= 2) {
        if (passed + step <= m_slots.size() && m_slots[passed + step - 1].shownUpTo <= position) {
            passed += step;
            position -= m_slots[passed - 1].shownUpTo;
        }
    }
    return passed;
}

std::size_t ChildList::FirstSlotFrom(std::size_t at) const noexcept {
    while (at < m_slots.size() && !IsFirst(at)) {
        ++at;
    }
    return at;
}

LayoutNode* ChildList::OwnedFrom(std::size_t at) const noexcept {
    at = FirstSlotFrom(at);
    return at < m_nodes.size() ? m_nodes[at] : nullptr;
}

LayoutNode* ChildList::OwnedBehind(LayoutNode const& child) const noexcept {
    std::size_t at = child.m_slot;
    while (m_slots[at].earlier != None) {
        at = m_slots[at].earlier;
    }
    return OwnedFrom(at + 1);
}

LayoutNode* ChildList::Find(std::wstring_view name) const noexcept {
    auto const next = m_names.upper_bound(name);
    return next != m_names.begin() && Text::Compare(std::prev(next)->first, name) == 0
               ? std::prev(next)->second
               : nullptr;
}

LayoutNode* ChildList::FindUtf8(std::string_view utf8Name, std::size_t& hint) const {
    if (m_names.empty()) {
        return nullptr;
    }
    // The name that counts is that of the index, which a child's own name may no longer be.
    std::size_t next = hint;
    for (int attempt = 0; attempt < 2; ++attempt) {
        Names::const_iterator const name = m_slots[next < m_slots.size() ? next : next = 0].name;
        ++next;
        if (name != m_names.end() && Text::EqualsUtf8(name->first, utf8Name)) {
            hint = next;
            return m_hasNamesakes ? Find(name->first) : name->second;
        }
    }
    LayoutNode* const found = Find(StringConversion::Utf8ToNative(utf8Name));
    if (found != nullptr) {
        hint = found->m_slot + 1;
    }
    return found;
}

void ChildList::Append(LayoutNode& child, bool isIndexed) {
    MakeRoomForOne(m_nodes);
    MakeRoomForOne(m_slots);
    Names::iterator const name = isIndexed ? m_names.emplace(child.m_name, &child) : m_names.end();

    // From here on nothing can fail.
    if (child.m_owner != this) {
        if (child.m_owner != nullptr) {
            child.m_owner->Remove(child);
        }
        child.m_owner = this;
    }
    if (isIndexed && name != m_names.begin() && std::prev(name)->first == name->first) {
        m_hasNamesakes = true;
    }
    ++m_shownCount;
    Add(&child, {name, true});
    NoteChange();
}

/// Puts a slot behind all others, for which there is room.
void ChildList::Add(LayoutNode* node, Slot const& slot) noexcept {
    m_nodes.push_back(node);
    m_slots.push_back(slot);
    Put(node, slot, m_slots.size() - 1);
}

/// Puts a slot at its place behind those that are in order already: chains it behind the slots of its child,
/// and counts what it covers.
void ChildList::Put(LayoutNode* node, Slot slot, std::size_t at) noexcept {
    slot.earlier = std::exchange(node->m_slot, at);
    slot.shownUpTo = slot.isShown ? 1 : 0;
    for (std::size_t step = 1; step < Covered(at + 1); step *= 2) {
        slot.shownUpTo += m_slots[at - step].shownUpTo;
    }
    m_nodes[at] = node;
    m_slots[at] = slot;
}

/// Before slots are put in order anew: lets their children forget their places.
void ChildList::Unchain() noexcept {
    for (LayoutNode* const node : m_nodes) {
        if (node != nullptr) {
            node->m_slot = None;
        }
    }
}

void ChildList::NoteChange() noexcept {
    if (m_holder != nullptr) {
        ++m_holder->m_children.m_changes;
    }
}

void ChildList::Remove(LayoutNode& child) noexcept {
    NoteChange();
    child.m_owner = nullptr;
    for (std::size_t at = std::exchange(child.m_slot, None); at != None; at = m_slots[at].earlier) {
        Slot& slot = m_slots[at];
        if (slot.isShown) {
            --m_shownCount;
            for (std::size_t number = at + 1; number <= m_slots.size(); number += Covered(number)) {
                --m_slots[number - 1].shownUpTo;
            }
        }
        if (slot.name != m_names.end()) {
            m_names.erase(std::exchange(slot.name, m_names.end()));
        }
        m_nodes[at] = nullptr;
        slot.isShown = false;
        ++m_blankCount;
    }
    bool const isEnding = m_endedUpTo != None;
    if (!isEnding && (2 * m_blankCount > m_slots.size() || m_slots.size() <= ShortRow)) {
        CloseUp();
    }
}

/// Takes the blanks out of the row.
void ChildList::CloseUp() noexcept {
    Unchain();
    std::size_t end = 0;
    for (std::size_t at = 0; at < m_slots.size(); ++at) {
        if (m_nodes[at] != nullptr) {
            Put(m_nodes[at], m_slots[at], end++);
        }
    }
    m_nodes.resize(end);
    m_slots.erase(m_slots.begin() + static_cast<std::ptrdiff_t>(end), m_slots.end());
    m_blankCount = 0;
}

/// The order is worked out in numbers of slots. The first use of a slot in the new order takes it over; a
/// second use, which shows the same entry once more, gets a slot without a name of its own. The slots that
/// are left over stay hidden at the end for the sake of their names, and of the children that stand nowhere
/// else.
void ChildList::Move(LayoutNode& child, std::size_t index) {
    std::vector<std::size_t> order;
    order.reserve(m_shownCount);
    for (std::size_t at = 0; at < m_slots.size(); ++at) {
        if (m_slots[at].isShown) {
            order.push_back(at);
        }
    }
    std::vector<std::size_t> moved;
    moved.reserve(m_shownCount + 1);
    for (std::size_t const at : order) {
        // Not looked at once more after the last entry: a target there drops the child and shows the last
        // entry twice.
        if (moved.size() == index) {
            moved.push_back(child.m_slot);
        }
        if (m_nodes[at] != &child) {
            moved.push_back(at);
        }
    }
    std::copy_n(moved.begin(), std::min(moved.size(), order.size()), order.begin());
    std::vector<LayoutNode*> nodes;
    std::vector<Slot> slots;
    nodes.reserve(order.size() + m_slots.size());
    slots.reserve(order.size() + m_slots.size());

    // From here on nothing can fail.
    Unchain();
    nodes.swap(m_nodes);
    slots.swap(m_slots);
    auto const add = [&](std::size_t at, bool isShown) {
        Add(nodes[at], {std::exchange(slots[at].name, m_names.end()), isShown});
    };
    for (std::size_t const at : order) {
        add(at, true);
    }
    for (std::size_t at = 0; at < slots.size(); ++at) {
        if (nodes[at] != nullptr && (slots[at].name != m_names.end() || nodes[at]->m_slot == None)) {
            add(at, false);
        }
    }
    m_blankCount = 0;
}

/// The next child to be ended, or null when none is left.
LayoutNode* ChildList::TakeFirst() noexcept {
    m_endedUpTo = FirstSlotFrom(m_endedUpTo != None ? m_endedUpTo : 0);
    if (m_endedUpTo == m_slots.size()) {
        return nullptr;
    }
    LayoutNode* const child = std::exchange(m_nodes[m_endedUpTo], nullptr);
    child->m_owner = nullptr;
    child->m_slot = None;
    return child;
}

/// A child that ends puts its own list on top of the pile, so that its children come next and a tree of any
/// depth needs no depth of stack. All lists of the pile still answer to Remove: a destructor may end a child
/// that waits in one of them, or append it to a list that stays.
void ChildList::End(std::unique_ptr<ChildList> pile) noexcept {
    while (pile != nullptr) {
        if (LayoutNode* const child = pile->TakeFirst()) {
            child->m_children.m_heir = &pile;
            delete child;
        } else {
            pile = std::move(pile->m_below);
        }
    }
}

void ChildList::Pile(std::unique_ptr<ChildList> list, std::unique_ptr<ChildList>& pile) noexcept {
    list->m_holder = nullptr;
    for (LayoutNode* child = list->FirstOwned(); child != nullptr; child = list->OwnedBehind(*child)) {
        child->m_parent = nullptr;
    }
    list->m_below = std::move(pile);
    pile = std::move(list);
}

} // namespace Zantrel
