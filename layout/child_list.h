// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "text/utf16_order.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Zantrel {

struct LayoutNode;

/// The inside of LayoutNodes: a row of slots and an index by name.
///
/// Appending a child makes a slot for it at the end of the row and an entry for its name, which the slot
/// refers to. A slot shows its child at a position, or hides it, which only a move does, or is blank once the
/// child has left. What is true between any two calls:
/// - A child that stands here says so in its m_owner and has at least one slot. Its slots form a chain from
///   the last, its m_slot, to the first, which is the one with nothing before it: so "each first slot" means
///   each owned child once, in list order.
/// - m_names has one entry for each appending whose child hasn't left, entries of one name in the order in
///   which they were made: the last one answers, and when its child leaves, the one before it does. A child
///   that was appended under several names answers to each. A copy's children have none.
/// - `shownUpTo` is a Fenwick tree: the slot with the number i, from 1, counts the shown ones among as many
///   slots up to itself as the lowest set bit of i says. Where every slot is shown, which is the rule, the
///   position is the slot and the tree isn't asked.
/// Leaving blanks the child's slots, and closes the row up only when more than half of it is blank: so every
/// child is moved a bounded number of times on average. Nothing is put off to a reading call.
class ChildList {
public:
    explicit ChildList(LayoutNode* holder) noexcept : m_holder(holder) {}
    ChildList(ChildList const&) = delete;
    ChildList& operator=(ChildList const&) = delete;

    /// The node whose children these are; null when it has ended or when there never was one.
    LayoutNode* Holder() const noexcept { return m_holder; }

    std::size_t Size() const noexcept { return m_shownCount; }
    /// Requires position < Size().
    LayoutNode* const& Shown(std::size_t position) const noexcept { return m_nodes[SlotAt(position)]; }
    /// The children in order where every slot is shown, so that positions needn't be looked up; else null.
    LayoutNode* const* Row() const noexcept { return IsRow() ? m_nodes.data() : nullptr; }

    LayoutNode* Find(std::wstring_view name) const noexcept;
    LayoutNode* FindUtf8(std::string_view utf8Name, std::size_t& hint) const;

    /// Shows `child` last and owns it; the list that had it before loses it. On std::bad_alloc nothing has
    /// changed.
    void Append(LayoutNode& child, bool isIndexed);
    /// Requires that `child` stands here. From then on its caller owns it. Needs no memory.
    void Remove(LayoutNode& child) noexcept;
    /// See LayoutNode::MoveNodeTo. Requires that `child` stands here. On std::bad_alloc nothing has changed.
    void Move(LayoutNode& child, std::size_t index);

    /// The owned children, hidden ones too, each once: the first, and the one behind `child`. Null at the
    /// end.
    LayoutNode* FirstOwned() const noexcept { return OwnedFrom(0); }
    LayoutNode* OwnedBehind(LayoutNode const& child) const noexcept;

    /// Ends the children of all lists of a pile, the topmost list first, each list in its order.
    static void End(std::unique_ptr<ChildList> pile) noexcept;
    /// Puts `list`, whose holder ends, on top of the pile.
    static void Pile(std::unique_ptr<ChildList> list, std::unique_ptr<ChildList>& pile) noexcept;

    static constexpr std::size_t None = static_cast<std::size_t>(-1);

private:
    using Names = std::multimap<std::wstring, LayoutNode*, Text::Utf16Less>;

    struct Slot {
        Names::iterator name; ///< made with this slot, or the end: of a copy, and shown once more by a move
        bool isShown;
        std::size_t earlier = None;
        std::size_t shownUpTo = 0;
    };

    bool IsRow() const noexcept { return m_shownCount == m_slots.size(); }
    bool IsFirst(std::size_t at) const noexcept {
        return m_nodes[at] != nullptr && m_slots[at].earlier == None;
    }
    LayoutNode* OwnedFrom(std::size_t at) const noexcept;
    std::size_t FirstSlotFrom(std::size_t at) const noexcept;
    std::size_t SlotAt(std::size_t position) const noexcept;
    void Add(LayoutNode* node, Slot const& slot) noexcept;
    void Put(LayoutNode* node, Slot slot, std::size_t at) noexcept;
    void Unchain() noexcept;
    void CloseUp() noexcept;
    /// To the node that holds the list.
    void NoteChange() noexcept;
    LayoutNode* TakeFirst() noexcept;

    LayoutNode* m_holder;
    std::vector<LayoutNode*> m_nodes; ///< of the slots, null in a blank one
    std::vector<Slot> m_slots;
    Names m_names;
    bool m_hasNamesakes =
        false; ///< two children had one name once: an entry met on the way may not be the last
    std::size_t m_shownCount = 0;
    std::size_t m_blankCount = 0;

    std::unique_ptr<ChildList> m_below; ///< in a pile of lists that end
    std::size_t m_endedUpTo = None;     ///< in such a pile: the slots before it have been dealt with
};

} // namespace Zantrel
