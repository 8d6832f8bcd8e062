// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <zantrel/export.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

namespace Zantrel {

struct LayoutNode;
class ChildList;

/// The children of a layout node, in the order in which the host meets them, found by position and by name.
///
/// Who owns a child: the list to which it was appended last. The child is ended exactly once, by that list,
/// unless it is ended by somebody else or appended to another list before; then it has left, and no position
/// and no name leads to it any more. How often the list shows a child, and whether it shows it at all, which
/// MoveNodeTo changes, makes no difference.
///
/// Filled through LayoutNode. A child leaves at a cost that doesn't depend on its place, on its name, or (but
/// for a logarithm) on how many there are. Reading writes nothing: several threads may read a list that
/// nobody changes. Whatever changes the list ends the use of its iterators; a child's address stays for its
/// life.
class ZANTREL_EXPORT LayoutNodes {
public:
    class const_iterator;

    LayoutNodes() noexcept;
    /// Copies each shown child with all that is below it, deeply, into a new list. At every level the copy
    /// has no index (a lookup by name finds nothing) and each copied node still names the parent of its
    /// source: the source must outlive the copy, or at least the use of those parents. Throws std::bad_alloc
    /// and leaves nothing behind.
    LayoutNodes(LayoutNodes const& source);
    /// Replaces the children by such a copy; on std::bad_alloc they stay as they were. From a list that
    /// stands below this one, the copies get the parents that they stand under, since those of the source are
    /// gone.
    LayoutNodes& operator=(LayoutNodes const& source);
    ~LayoutNodes();

    /// Ends all children in list order, at any depth of the tree without nested calls. To the destructors of
    /// the children the list is empty by then.
    void Clear() noexcept;

    /// The number of positions, which counts a child as often as the list shows it.
    std::size_t Size() const noexcept;
    /// The child at a position, at a cost that is constant in a list that no child has left, and otherwise
    /// grows with its logarithm. Throws std::out_of_range, "invalid vector subscript".
    LayoutNode& At(std::size_t index) const;
    /// The last child, or null.
    LayoutNode* Back() const noexcept;

    /// All positions in order. Each costs a step in memory in a list that no child has left, otherwise what
    /// At costs.
    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;

    /// The latest child that was appended under this name and hasn't left, or null. Never allocates.
    LayoutNode* Find(std::wstring_view name) const noexcept;

    /// What Find gives for the name converted from UTF-8, for a reader that meets the children in list order:
    /// with the `hint` that the call for the child before this one left, nothing is converted or allocated.
    /// The first call takes 0. Any `hint` gives the same answer; it changes only when a child was found.
    LayoutNode* FindUtf8(std::string_view utf8Name, std::size_t& hint) const;

private:
    friend struct LayoutNode;
    friend class ChildList;
    friend class NodeShape;
    enum class Parents { AsInSource, OfTheCopy };

    /// The children of `holder`.
    explicit LayoutNodes(LayoutNode* holder) noexcept;

    LayoutNode* const& Shown(std::size_t position) const noexcept;
    LayoutNode* const* Row() const noexcept;
    ChildList& List();
    void Append(LayoutNode* child);
    void Move(LayoutNode const* child, std::size_t index);
    void CopyFrom(LayoutNodes const& source, Parents parents);

    LayoutNode* m_holder = nullptr;    ///< whose children these are; null for a list that stands alone
    std::unique_ptr<ChildList> m_list; ///< null while there is no child
    std::unique_ptr<ChildList>* m_heir = nullptr; ///< takes m_list at the end instead of its being ended here
    bool m_wasFilled = false;                     ///< a node may name the holder as its parent
    std::uint32_t m_changes =
        0; ///< how often children came, left or moved: who kept it can tell a list unchanged
};

/// A position in the list, random access. Good until the list changes.
class LayoutNodes::const_iterator {
public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = LayoutNode*;
    using difference_type = std::ptrdiff_t;
    using pointer = LayoutNode* const*;
    using reference = LayoutNode* const&;

    const_iterator() = default;

    reference operator*() const { return m_row != nullptr ? m_row[m_position] : m_nodes->Shown(m_position); }
    pointer operator->() const { return &**this; }
    reference operator[](difference_type distance) const { return *(*this + distance); }

    const_iterator& operator+=(difference_type distance) {
        m_position += static_cast<std::size_t>(distance);
        return *this;
    }
    const_iterator& operator-=(difference_type distance) { return *this += -distance; }
    const_iterator& operator++() { return *this += 1; }
    const_iterator& operator--() { return *this -= 1; }
    const_iterator operator++(int) { return std::exchange(*this, *this + 1); }
    const_iterator operator--(int) { return std::exchange(*this, *this - 1); }

    /// Comparing and subtracting go by positions alone: both sides must be of one list.
    friend const_iterator operator+(const_iterator at, difference_type distance) { return at += distance; }
    friend const_iterator operator+(difference_type distance, const_iterator at) { return at += distance; }
    friend const_iterator operator-(const_iterator at, difference_type distance) { return at -= distance; }
    friend difference_type operator-(const_iterator left, const_iterator right) {
        return static_cast<difference_type>(left.m_position - right.m_position);
    }
    friend bool operator==(const_iterator left, const_iterator right) { return left - right == 0; }
    friend bool operator!=(const_iterator left, const_iterator right) { return left - right != 0; }
    friend bool operator<(const_iterator left, const_iterator right) { return left - right < 0; }
    friend bool operator>(const_iterator left, const_iterator right) { return left - right > 0; }
    friend bool operator<=(const_iterator left, const_iterator right) { return left - right <= 0; }
    friend bool operator>=(const_iterator left, const_iterator right) { return left - right >= 0; }

private:
    friend class LayoutNodes;
    const_iterator(LayoutNodes const* nodes, std::size_t position)
        : m_nodes(nodes), m_row(nodes->Row()), m_position(position) {}

    LayoutNodes const* m_nodes = nullptr;
    LayoutNode* const* m_row = nullptr; ///< null where positions must be looked up
    std::size_t m_position = 0;
};

inline LayoutNodes::const_iterator LayoutNodes::begin() const noexcept { return const_iterator(this, 0); }
inline LayoutNodes::const_iterator LayoutNodes::end() const noexcept { return const_iterator(this, Size()); }

} // namespace Zantrel
